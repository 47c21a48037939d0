// Files that are wholly old or wholly new, whatever happens while they are written.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quorvanta {

// Writes the bytes to a temporary file beside the target, brings them to the disk and renames the
// file over the target. False if any of it fails: the target is then as it was, and the temporary
// file is gone. A target that the user may not write, or that is no regular file, is refused; the
// permissions of an existing target and what a symbolic link points to are kept.
//
// A process that is killed while it saves leaves its temporary file behind, hidden by its name
// (".quorvanta-<process>-<number>.tmp"). The next save in the folder removes it, an hour later at
// the earliest: before that another process may be writing it.
bool SaveFile(const std::string& path, std::string_view bytes);

// The first bytes of a file, at most maxBytes; nothing if it can't be read.
std::optional<std::string> LoadFile(const std::string& path, std::size_t maxBytes);

} // namespace quorvanta
