#include "core/save_file.h"

#include "core/file_calls.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <csignal>
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

// Where the bytes go: a link is followed, so that it goes on pointing to the file, even if there is
// no such file yet.
fs::path Target(const std::string& path) {
    fs::path target = path;
    std::error_code error;
    constexpr int mostLinks = 40; // more are a circle
    for (int i = 0; i < mostLinks && fs::is_symlink(fs::symlink_status(target, error)); ++i) {
        const fs::path next = fs::read_symlink(target, error);
        if (error)
            break;
        target = target.parent_path() / next;
    }
    fs::path whole = fs::weakly_canonical(target, error);
    return error ? target : whole;
}

using FileStatus = struct stat;

std::optional<FileStatus> StatusOf(const fs::path& target) {
    FileStatus status{};
    return ::stat(target.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

bool MayReplace(const fs::path& target) {
    const auto status = StatusOf(target);
    if (!status)
        return errno == ENOENT;
    return S_ISREG(status->st_mode) && ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) == 0;
}

// Gives the file the owner and the permissions of the former one. What counts is what it has then:
// a file system may refuse the change of what it gives to every file alike.
bool TakesAfter(const FileStatus& former, const File& file, const FileCalls& calls) {
    constexpr mode_t permissions = 07777;
    const int descriptor = file.Descriptor();
    (void)calls.ChangeOwner(descriptor, former.st_uid, former.st_gid);
    (void)calls.ChangeMode(descriptor, former.st_mode & permissions);
    FileStatus now{};
    return ::fstat(descriptor, &now) == 0 && now.st_uid == former.st_uid &&
           now.st_gid == former.st_gid &&
           (now.st_mode & permissions) == (former.st_mode & permissions);
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

enum class Outcome {
    Saved,
    NotReplaceable, // a new file can't take the place of the old one as it is
    Failed
};

// Writes the bytes to a temporary file and renames it over the target.
Outcome Replace(const fs::path& target, const std::optional<FileStatus>& former,
                std::string_view bytes, const FileCalls& calls) {
    if (former && former->st_nlink > 1)
        return Outcome::NotReplaceable;
    const fs::path temporary = TemporaryName(target.parent_path());
    constexpr mode_t fromUmask = 0666;
    const File file(temporary, O_WRONLY | O_CREAT | O_EXCL, fromUmask);
    if (!file.IsOpen())
        return Outcome::Failed;
    const bool isLike = !former || TakesAfter(*former, file, calls);
    const bool isWritten = isLike && file.Write(bytes) && file.Sync();
    if (isWritten && calls.Rename(temporary.c_str(), target.c_str()) == 0)
        return Outcome::Saved;
    ::unlink(temporary.c_str());
    return isWritten || !isLike ? Outcome::NotReplaceable : Outcome::Failed;
}

// A name beside the target that no file has, for what the target held.
fs::path NameOfOld(const fs::path& target) {
    for (int i = 0;; ++i) {
        const std::string ending = i == 0 ? ".old" : ".old-" + std::to_string(i);
        fs::path name = target.parent_path() / (target.filename().string() + ending);
        std::error_code error;
        if (!fs::exists(fs::symlink_status(name, error)))
            return name;
    }
}

bool WriteOver(const fs::path& target, std::string_view bytes) {
    const File file(target, O_WRONLY);
    return file.IsOpen() && file.Write(bytes) &&
           ::ftruncate(file.Descriptor(), static_cast<off_t>(bytes.size())) == 0 && file.Sync();
}

bool WriteNew(const fs::path& path, std::string_view bytes) {
    constexpr mode_t ownerOnly = 0600;
    const File file(path, O_WRONLY | O_CREAT | O_EXCL, ownerOnly);
    if (!file.IsOpen())
        return false;
    if (file.Write(bytes) && file.Sync())
        return true;
    ::unlink(path.c_str());
    return false;
}

// The new name survives a power failure once its folder is on the disk; where a file system can't
// do that, the file is whole all the same.
void SyncFolder(const fs::path& folder) {
    const File directory(folder, O_RDONLY | O_DIRECTORY);
    if (directory.IsOpen())
        (void)directory.Sync();
}

// Writes the bytes over those of the target. The old ones lie beside it meanwhile, and come back if
// the new ones can't be written.
bool WriteInPlace(const fs::path& target, const FileStatus& former, std::string_view bytes) {
    const auto oldBytes = LoadFile(target.string(), static_cast<std::size_t>(former.st_size));
    if (!oldBytes)
        return false;
    const fs::path copy = NameOfOld(target);
    if (!WriteNew(copy, *oldBytes))
        return false;
    SyncFolder(target.parent_path());
    const bool isWritten = WriteOver(target, bytes);
    if (isWritten || WriteOver(target, *oldBytes))
        ::unlink(copy.c_str());
    return isWritten;
}

} // namespace

bool SaveFileBy(const FileCalls& calls, const std::string& path, std::string_view bytes) {
    const fs::path target = Target(path);
    if (!MayReplace(target))
        return false;
    const auto former = StatusOf(target);
    const Outcome outcome = Replace(target, former, bytes, calls);
    const bool isSaved =
        outcome == Outcome::Saved ||
        (outcome == Outcome::NotReplaceable && former && WriteInPlace(target, *former, bytes));
    if (!isSaved)
        return false;
    const fs::path folder = target.parent_path();
    SyncFolder(folder);
    RemoveLeftovers(folder);
    return true;
}

bool SaveFile(const std::string& path, std::string_view bytes) {
    return SaveFileBy({}, path, bytes);
}

void OutliveFileSizeLimit() {
    std::signal(SIGXFSZ, SIG_IGN);
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
