// A thread of its own counts the seconds, so that no step has to say how far it has come. It is started with
// interrupts held, as held_interrupts.h asks.

#include "progress.h"

#include <chrono>
#include <utility>

#include "platform/held_interrupts.h"

namespace host {

Progress::Progress(std::string step, std::ostream& errors, bool isShown)
    : m_strStep(std::move(step)), m_errors(errors) {
    if (!isShown) return;
    const qev::platform::HeldInterrupts held;
    m_thread = std::thread([this] { Run(); });
}

Progress::~Progress() {
    if (!m_thread.joinable()) return;
    {
        const std::lock_guard lock(m_mutex);
        m_bEnded = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void Progress::Run() {
    std::unique_lock lock(m_mutex);
    std::size_t shown = 0;
    const auto isEnded = [this] { return m_bEnded; };
    for (int seconds = 1; !m_wake.wait_for(lock, std::chrono::seconds(1), isEnded); ++seconds) {
        const std::string line = m_strStep + ", " + std::to_string(seconds) + " s";
        m_errors << "\r" << line << std::flush;
        shown = line.size();
    }
    if (shown > 0) m_errors << "\r" << std::string(shown, ' ') << "\r" << std::flush;
}

} // namespace host
