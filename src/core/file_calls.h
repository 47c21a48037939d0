// What the saving of files asks of a POSIX system, so that checks can have each of it refused.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvanta {

// Beside reading and writing; a file system may refuse each.
struct FileCalls {
    int (*ChangeOwner)(int file, uid_t owner, gid_t group) = ::fchown;
    int (*ChangeMode)(int file, mode_t mode) = ::fchmod;
    int (*Rename)(const char* from, const char* to) = ::rename;
};

// SaveFile (core/save_file.h) by these calls.
bool SaveFileBy(const FileCalls& calls, const std::string& path, std::string_view bytes);

} // namespace quorvanta
