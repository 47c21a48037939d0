#include "core/save_file.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace quorvanta {

namespace {

namespace fs = std::filesystem;

// An open file that is closed when it goes out of scope.
class File {
  public:
    File(const fs::path& path, int flags, mode_t mode = 0)
        : descriptor_(::open(path.c_str(), flags | O_CLOEXEC, mode)) {}
    ~File() {
        if (IsOpen())
            ::close(descriptor_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const { return descriptor_ >= 0; }
    int Descriptor() const { return descriptor_; }

    bool Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        return true;
    }

    bool Sync() const { return ::fsync(descriptor_) == 0; }

  private:
    int descriptor_;
};

// Where the bytes go: a link is followed, so that it goes on pointing to the file.
fs::path Target(const std::string& path) {
    std::error_code error;
    fs::path target = fs::weakly_canonical(path, error);
    return error ? fs::path(path) : target;
}

bool MayReplace(const fs::path& target) {
    struct stat status {};
    if (::stat(target.c_str(), &status) != 0)
        return errno == ENOENT;
    return S_ISREG(status.st_mode) && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
}

bool KeepPermissions(const fs::path& target, const File& file) {
    struct stat status {};
    constexpr mode_t permissions = 07777;
    return ::stat(target.c_str(), &status) != 0 ||
           ::fchmod(file.Descriptor(), status.st_mode & permissions) == 0;
}

constexpr std::string_view TemporaryPrefix = ".quorvanta-";
constexpr std::string_view TemporarySuffix = ".tmp";

// A name in the folder that no file has. One that a killed process left behind is not taken up
// again: another process may be writing it.
fs::path TemporaryName(const fs::path& folder) {
    const std::string stem = std::string(TemporaryPrefix) + std::to_string(::getpid()) + "-";
    for (int i = 0;; ++i) {
        fs::path name = folder / (stem + std::to_string(i) + std::string(TemporarySuffix));
        std::error_code error;
        if (!fs::exists(fs::symlink_status(name, error)))
            return name;
    }
}

bool IsTemporaryName(std::string_view name) {
    if (!name.starts_with(TemporaryPrefix) || !name.ends_with(TemporarySuffix) ||
        name.size() <= TemporaryPrefix.size() + TemporarySuffix.size())
        return false;
    name.remove_prefix(TemporaryPrefix.size());
    name.remove_suffix(TemporarySuffix.size());
    return std::ranges::all_of(name,
                               [](unsigned char c) { return c == '-' || std::isdigit(c) != 0; });
}

// Removes what killed processes have left behind; what can't be removed stays.
void RemoveLeftovers(const fs::path& folder) {
    constexpr std::chrono::hours longEnough(1);
    const auto now = fs::file_time_type::clock::now();
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (!IsTemporaryName(entry->path().filename().string()))
            continue;
        std::error_code unknown;
        const auto written = entry->last_write_time(unknown);
        if (!unknown && now - written > longEnough)
            fs::remove(entry->path(), unknown);
    }
}

// Writes the bytes to the temporary file and renames it over the target.
bool Replace(const fs::path& target, const fs::path& temporary, std::string_view bytes) {
    constexpr mode_t fromUmask = 0666;
    const File file(temporary, O_WRONLY | O_CREAT | O_EXCL, fromUmask);
    if (!file.IsOpen())
        return false;
    if (KeepPermissions(target, file) && file.Write(bytes) && file.Sync() &&
        ::rename(temporary.c_str(), target.c_str()) == 0)
        return true;
    ::unlink(temporary.c_str());
    return false;
}

} // namespace

bool SaveFile(const std::string& path, std::string_view bytes) {
    const fs::path target = Target(path);
    const fs::path folder = target.parent_path();
    if (!MayReplace(target) || !Replace(target, TemporaryName(folder), bytes))
        return false;
    // The new name survives a power failure once its folder is on the disk; where a file system
    // can't do that, the file is whole all the same.
    const File directory(folder, O_RDONLY | O_DIRECTORY);
    if (directory.IsOpen())
        (void)directory.Sync();
    RemoveLeftovers(folder);
    return true;
}

std::optional<std::string> LoadFile(const std::string& path, std::size_t maxBytes) {
    const File file(path, O_RDONLY | O_NONBLOCK);
    if (!file.IsOpen())
        return std::nullopt;
    std::string bytes(maxBytes, '\0');
    std::size_t size = 0;
    while (size < maxBytes) {
        const ssize_t got = ::read(file.Descriptor(), bytes.data() + size, maxBytes - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return std::nullopt;
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
    }
    bytes.resize(size);
    return bytes;
}

} // namespace quorvanta
