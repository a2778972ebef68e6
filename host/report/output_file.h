/// \file
/// A file that the host writes: whole or not at all.
#pragma once

#include <fstream>
#include <ostream>
#include <string>

#include "platform/held_interrupts.h"

namespace host {

/// Writes a file beside its place and moves it there when it is whole, so that a full disc, a folder that
/// cannot be written to or Ctrl-C leaves the file that was there before, and no half-written one. An
/// interrupt waits while the object lives. A pipe or a device is written to directly.
class OutputFile {
public:
    /// Opens the file. `what` says in messages what it is, as "picture". Throws a DrawingError when it cannot
    /// be written.
    OutputFile(std::string path, const char* what);
    /// Removes what was written, unless it was kept.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Takes the file's bytes. What goes wrong is noticed when the file is kept.
    std::ostream& Stream() { return m_file; }

    /// Puts the file in its place, instead of one that was there. Throws a DrawingError when not all of it
    /// could be written.
    void Keep();

private:
    [[noreturn]] void Fail() const;

    qev::platform::HeldInterrupts m_interrupts;
    std::string m_strPath;
    std::string m_strWritten; // where the bytes go first
    const char* m_szWhat;
    std::ofstream m_file;
    bool m_bKept = false;
};

} // namespace host
