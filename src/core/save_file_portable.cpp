// Where there is no POSIX: by the standard library alone.
//
// The bytes are not forced to the disk, and a file that a killed process leaves behind stays; a
// target with hard links loses them.
#include "core/save_file.h" // IWYU pragma: associated

#include <filesystem>
#include <fstream>
#include <ios>
#include <random>
#include <system_error>

namespace quorvanta {

namespace {

namespace fs = std::filesystem;

// A name beside the target that no file has.
fs::path TemporaryName(const fs::path& target) {
    std::random_device source;
    for (;;) {
        fs::path name = target.parent_path() / (".quorvanta-" + std::to_string(source()) + ".tmp");
        std::error_code error;
        if (!fs::exists(fs::symlink_status(name, error)))
            return name;
    }
}

bool MayReplace(const fs::path& target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status))
        return status.type() == fs::file_type::not_found;
    return fs::is_regular_file(status) &&
           (status.permissions() & fs::perms::owner_write) != fs::perms::none;
}

bool Write(const fs::path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    return !file.fail();
}

} // namespace

bool SaveFile(const std::string& path, std::string_view bytes) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(path, error);
    if (error || !MayReplace(target))
        return false;
    const fs::path temporary = TemporaryName(target);
    bool isSaved = Write(temporary, bytes);
    if (isSaved) {
        fs::rename(temporary, target, error);
        isSaved = !error;
    }
    if (!isSaved)
        fs::remove(temporary, error);
    return isSaved;
}

void OutliveFileSizeLimit() {}

std::optional<std::string> LoadFile(const std::string& path, std::size_t maxBytes) {
    std::error_code error;
    if (!fs::is_regular_file(path, error))
        return std::nullopt;
    std::ifstream file(path, std::ios::binary);
    std::string bytes(maxBytes, '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(maxBytes));
    if (file.bad() || !file.is_open())
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

} // namespace quorvanta
