/// \file
/// A line that tells a waiting user what the host is doing.
#pragma once

#include <condition_variable>
#include <mutex>
#include <ostream>
#include <string>
#include <thread>

namespace host {

/// Shows one step of the work while it lasts, on a line of a terminal that is written over each second, from
/// the first second on. The line is gone when the object is; nobody else may write to the terminal until
/// then.
class Progress {
public:
    /// Shows the step, as "part.dxf: reading", on `errors`; nothing when `isShown` is false.
    Progress(std::string step, std::ostream& errors, bool isShown);
    /// Wipes the line out.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void Run();

    const std::string m_strStep;
    std::ostream& m_errors;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_bEnded = false; // under the mutex
    std::thread m_thread;
};

} // namespace host
