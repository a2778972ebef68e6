// Writing beside and renaming is the one way that needs no promise of the system but an atomic rename. The
// file is not forced to the disc: a power failure is not among the things that it has to survive.

#include "output_file.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include "host/drawing/drawing_error.h"
#include "platform/output_path.h"

namespace host {

using qev::platform::IsSpecial;
using qev::platform::MoveOver;
using qev::platform::PathBeside;

OutputFile::OutputFile(std::string path, const char* what)
    : m_strPath(std::move(path)),
      m_strWritten(IsSpecial(m_strPath.c_str()) ? m_strPath : PathBeside(m_strPath.c_str())), m_szWhat(what) {
    errno = 0;
    m_file.open(m_strWritten, std::ios::binary);
    if (!m_file) Fail();
}

OutputFile::~OutputFile() {
    if (m_bKept || m_strWritten == m_strPath) return;
    m_file.close();
    std::remove(m_strWritten.c_str());
}

void OutputFile::Keep() {
    if (m_file) errno = 0; // else it says why a part could not be written
    m_file.close();
    if (!m_file) Fail();
    if (m_strWritten != m_strPath && !MoveOver(m_strWritten.c_str(), m_strPath.c_str())) Fail();
    m_bKept = true;
}

// The system's reason, where it has given one, in its own words.
void OutputFile::Fail() const {
    const std::string reason = errno == 0 ? "" : ": " + std::generic_category().message(errno);
    throw DrawingError(std::string("the ") + m_szWhat + " " + m_strPath + " cannot be written" + reason);
}

} // namespace host
