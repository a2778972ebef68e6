// The system's rename replaces in one step.

#include "../output_path.h"

#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace qev::platform {

bool IsSpecial(const char* path) {
    struct stat status {};
    return ::stat(path, &status) == 0 && !S_ISREG(status.st_mode);
}

std::string PathBeside(const char* path) {
    return std::string(path) + "." + std::to_string(::getpid()) + ".part";
}

bool MoveOver(const char* from, const char* to) {
    return std::rename(from, to) == 0;
}

} // namespace qev::platform
