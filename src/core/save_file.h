// Files that are wholly old or wholly new, whatever happens while they are written.
//
// The one place that asks more of the operating system than the standard library offers:
// save_file.cpp is for POSIX systems, save_file_portable.cpp for any other.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// Writes the bytes to a temporary file beside the target, brings them to the disk and renames the
// file over the target. False if any of it fails: the target is then as it was, and the temporary
// file is gone. A target that the user may not write, or that is no regular file, is refused.
// Symbolic links are followed, one that points to nothing too.
//
// On a POSIX system an existing target keeps its owner, its permissions and its hard links. Where a
// rename can't keep them or is refused (files of another owner, some shares), the bytes are written
// over the old ones, with a copy of these beside the target ("<name>.old", "<name>.old-1", ...)
// until the target is whole. A process that is killed in between leaves the copy behind; nothing
// ever removes it.
//
// A process that is killed while it saves in the first way leaves its temporary file behind, hidden
// by its name (".quorvanta-<process>-<number>.tmp"). The next save in the folder removes it, an
// hour later at the earliest: before that another process may be writing it.
bool SaveFile(const std::string& path, std::string_view bytes);

// From now on a file that would grow beyond what the user may write is a failed save, not the end
// of the process.
void OutliveFileSizeLimit();

// The first bytes of a file, at most maxBytes; nothing if it can't be read.
std::optional<std::string> LoadFile(const std::string& path, std::size_t maxBytes);

} // namespace quorvanta
