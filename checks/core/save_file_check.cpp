#include "core/file_calls.h"
#include "core/save_file.h"
#include "support/refusals.h"
#include "support/temporary_folder.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quorvanta {
namespace {

constexpr std::size_t Whole = 1U << 20;

class SaveFiles : public ::testing::Test {
  protected:
    std::string Content(const std::string& name) {
        return LoadFile(folder_.Path(name), Whole).value_or("(unreadable)");
    }

    struct stat Status(const std::string& name) {
        struct stat status {};
        EXPECT_EQ(::lstat(folder_.Path(name).c_str(), &status), 0) << name;
        return status;
    }

    bool IsLink(const std::string& name) { return S_ISLNK(Status(name).st_mode); }

    void ExpectOwnerAndMode(const std::string& name, uid_t owner, gid_t group, mode_t mode) {
        const struct stat status = Status(name);
        EXPECT_EQ(status.st_uid, owner);
        EXPECT_EQ(status.st_gid, group);
        EXPECT_EQ(status.st_mode & 0777U, mode);
    }

    checks::TemporaryFolder folder_;
};

TEST_F(SaveFiles, WritesANewFile) {
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(SaveFiles, ReplacesAFileAndKeepsItsPermissions) {
    folder_.Write("a.dim", "a longer old content");
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0640), 0);
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    struct stat status {};
    ASSERT_EQ(::stat(folder_.Path("a.dim").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(SaveFiles, FollowsASymbolicLink) {
    folder_.Write("real.dim", "old");
    ASSERT_EQ(::symlink("real.dim", folder_.Path("link.dim").c_str()), 0);
    EXPECT_TRUE(SaveFile(folder_.Path("link.dim"), "new"));
    EXPECT_EQ(Content("real.dim"), "new");
    struct stat status {};
    ASSERT_EQ(::lstat(folder_.Path("link.dim").c_str(), &status), 0);
    EXPECT_TRUE(S_ISLNK(status.st_mode));
}

TEST_F(SaveFiles, FollowsALinkToNothing) {
    ASSERT_EQ(::symlink("real.dim", folder_.Path("second.dim").c_str()), 0);
    ASSERT_EQ(::symlink("second.dim", folder_.Path("first.dim").c_str()), 0);
    EXPECT_TRUE(SaveFile(folder_.Path("first.dim"), "new"));
    EXPECT_EQ(Content("real.dim"), "new");
    EXPECT_TRUE(IsLink("first.dim"));
    EXPECT_TRUE(IsLink("second.dim"));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"first.dim", "real.dim", "second.dim"}));
}

TEST_F(SaveFiles, RefusesLinksThatLeadNowhere) {
    ASSERT_EQ(::symlink("b.dim", folder_.Path("a.dim").c_str()), 0);
    ASSERT_EQ(::symlink("a.dim", folder_.Path("b.dim").c_str()), 0);
    ASSERT_EQ(::symlink("missing/c.dim", folder_.Path("c.dim").c_str()), 0);
    EXPECT_FALSE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_FALSE(SaveFile(folder_.Path("c.dim"), "new"));
    for (const char* name : {"a.dim", "b.dim", "c.dim"})
        EXPECT_TRUE(IsLink(name)) << name;
}

// --- Targets whose place no new file can take -------------------------------------------------

TEST_F(SaveFiles, LeavesAHardLinkWhole) {
    folder_.Write("a.dim", "a longer old content");
    ASSERT_EQ(::link(folder_.Path("a.dim").c_str(), folder_.Path("b.dim").c_str()), 0);
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    EXPECT_EQ(Content("b.dim"), "new");
    EXPECT_EQ(Status("a.dim").st_ino, Status("b.dim").st_ino);
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "b.dim"}));
}

TEST_F(SaveFiles, KeepsTheOwnerThatItMayGive) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser gives files away";
    folder_.Write("a.dim", "old");
    ASSERT_EQ(::chown(folder_.Path("a.dim").c_str(), 1234, 4321), 0);
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0664), 0);
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    ExpectOwnerAndMode("a.dim", 1234, 4321, 0664);
}

// A file shared with others, which the user may write but not give away.
TEST_F(SaveFiles, KeepsTheOwnerOfASharedFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make a file of another owner";
    folder_.Write("a.dim", "a longer old content");
    ASSERT_EQ(::chown(folder_.Path("a.dim").c_str(), 1234, 4321), 0);
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder_.Path("").c_str(), 0777), 0);
    bool saved = false;
    {
        const checks::OrdinaryUser user;
        saved = SaveFile(folder_.Path("a.dim"), "new");
    }
    EXPECT_TRUE(saved);
    EXPECT_EQ(Content("a.dim"), "new");
    ExpectOwnerAndMode("a.dim", 1234, 4321, 0666);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

int Refuse(int /*file*/, mode_t /*mode*/) {
    errno = EPERM;
    return -1;
}

int RefuseToRename(const char* /*from*/, const char* /*to*/) {
    errno = EPERM;
    return -1;
}

TEST_F(SaveFiles, SavesWhereTheModeCanNotBeChanged) {
    folder_.Write("a.dim", "a longer old content");
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0620), 0);
    const ino_t former = Status("a.dim").st_ino;
    EXPECT_TRUE(SaveFileBy({.ChangeMode = Refuse}, folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    EXPECT_EQ(Status("a.dim").st_mode & 0777U, 0620U);
    EXPECT_EQ(Status("a.dim").st_ino, former);
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

// A share gives one mode to all its files and refuses to change it: the new file has it already.
TEST_F(SaveFiles, ReplacesWhereEveryFileHasTheSameMode) {
    ASSERT_TRUE(SaveFile(folder_.Path("a.dim"), "old"));
    const mode_t mode = Status("a.dim").st_mode;
    EXPECT_TRUE(SaveFileBy({.ChangeMode = Refuse}, folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    EXPECT_EQ(Status("a.dim").st_mode, mode);
}

TEST_F(SaveFiles, SavesWhereARenameIsRefused) {
    folder_.Write("a.dim", "old");
    EXPECT_TRUE(
        SaveFileBy({.Rename = RefuseToRename}, folder_.Path("a.dim"), "a longer new content"));
    EXPECT_EQ(Content("a.dim"), "a longer new content");
    EXPECT_FALSE(SaveFileBy({.Rename = RefuseToRename}, folder_.Path("b.dim"), "new"));
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(SaveFiles, AFullDiskLeavesTheOldBytesInPlace) {
    folder_.Write("a.dim", "old");
    ASSERT_EQ(::link(folder_.Path("a.dim").c_str(), folder_.Path("b.dim").c_str()), 0);
    bool saved = true;
    {
        const checks::FileSizeLimit limit(1000);
        saved = SaveFile(folder_.Path("a.dim"), std::string(6350, 'n'));
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(Content("a.dim"), "old");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "b.dim"}));
}

TEST_F(SaveFiles, WritesOverNothingWithoutACopy) {
    folder_.Write("a.dim", std::string(5000, 'o'));
    ASSERT_EQ(::link(folder_.Path("a.dim").c_str(), folder_.Path("b.dim").c_str()), 0);
    bool saved = true;
    {
        const checks::FileSizeLimit limit(1000); // too little for the copy
        saved = SaveFile(folder_.Path("a.dim"), "new");
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(Content("a.dim"), std::string(5000, 'o'));
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "b.dim"}));
}

// What an earlier save has left is of value to someone.
TEST_F(SaveFiles, LeavesFormerCopiesAlone) {
    folder_.Write("a.dim", "old");
    folder_.Write("a.dim.old", "the user's");
    EXPECT_TRUE(SaveFileBy({.Rename = RefuseToRename}, folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "new");
    EXPECT_EQ(Content("a.dim.old"), "the user's");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "a.dim.old"}));
}

// A process that saves one content after the other is killed after that time.
void KillASaver(const std::string& path, const std::string (&contents)[2], useconds_t after) {
    const pid_t saver = ::fork();
    ASSERT_GE(saver, 0);
    if (saver == 0)
        for (std::size_t k = 1;; ++k)
            (void)SaveFile(path, contents[k % 2]);
    ::usleep(after);
    ::kill(saver, SIGKILL);
    ASSERT_EQ(::waitpid(saver, nullptr, 0), saver);
}

// Killed while it writes over a file: the file is whole, or the copy beside it is.
TEST(SavingProcess, LeavesAWholeCopyWhenItIsKilledInPlace) {
    const checks::TemporaryFolder folder;
    const std::string path = folder.Path("a.dim");
    constexpr std::size_t size = 1U << 18;
    const std::string contents[] = {std::string(size, 'A'), std::string(size, 'B')};
    const auto isWhole = [&contents](const std::optional<std::string>& found) {
        return found == contents[0] || found == contents[1];
    };
    ASSERT_TRUE(SaveFile(path, contents[0]));
    ASSERT_EQ(::link(path.c_str(), folder.Path("b.dim").c_str()), 0);
    std::mt19937 random(20240502); // the moments of the kills
    std::uniform_int_distribution<useconds_t> microseconds(0, 3000);
    int leftBehind = 0;
    for (int i = 0; i < 200 || (leftBehind == 0 && i < 2000); ++i) {
        KillASaver(path, contents, microseconds(random));
        const auto copy = LoadFile(folder.Path("a.dim.old"), Whole);
        ASSERT_TRUE(isWhole(LoadFile(path, Whole)) || isWhole(copy)) << "after kill " << i;
        leftBehind += copy ? 1 : 0;
        std::filesystem::remove(folder.Path("a.dim.old"));
        ASSERT_TRUE(SaveFile(path, contents[0]));
    }
    EXPECT_GT(leftBehind, 0);
}

TEST_F(SaveFiles, RefusesWhatIsNoFile) {
    EXPECT_FALSE(SaveFile(folder_.Path(""), "x"));
    EXPECT_FALSE(SaveFile("/dev/null", "x"));
    EXPECT_FALSE(SaveFile(folder_.Path("missing/a.dim"), "x"));
    EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(SaveFiles, RefusesAFolderThatIsReadOnly) {
    folder_.Write("a.dim", "old");
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder_.Path("").c_str(), 0555), 0);
    {
        const checks::OrdinaryUser user;
        EXPECT_FALSE(SaveFile(folder_.Path("a.dim"), "new"));
        EXPECT_FALSE(SaveFile(folder_.Path("b.dim"), "new"));
    }
    EXPECT_EQ(Content("a.dim"), "old");
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(SaveFiles, RefusesAFileThatIsReadOnly) {
    folder_.Write("a.dim", "old");
    ASSERT_EQ(::chmod(folder_.Path("a.dim").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder_.Path("").c_str(), 0777), 0);
    {
        const checks::OrdinaryUser user;
        EXPECT_FALSE(SaveFile(folder_.Path("a.dim"), "new"));
        EXPECT_TRUE(SaveFile(folder_.Path("b.dim"), "new"));
    }
    EXPECT_EQ(Content("a.dim"), "old");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "b.dim"}));
}

TEST_F(SaveFiles, AFullDiskLeavesTheOldFileAndNothingElse) {
    folder_.Write("a.dim", "old");
    bool saved = true;
    {
        const checks::FileSizeLimit limit(1000);
        saved = SaveFile(folder_.Path("a.dim"), std::string(6350, 'n'));
    }
    EXPECT_FALSE(saved);
    EXPECT_EQ(Content("a.dim"), "old");
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

// A process that saves again and again is killed at a random moment, a thousand times and more: the
// file is wholly one of its two contents each time.
TEST(SavingProcess, LeavesAWholeFileWhenItIsKilled) {
    // In memory, where there is one: the steps of a save then take about the same time each, and a
    // busy disk does not stretch the two that wait for it.
    const std::filesystem::path memory("/dev/shm");
    const checks::TemporaryFolder folder(
        std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path());
    const std::string path = folder.Path("a.dim");
    const std::string contents[] = {std::string(6350, 'A'), std::string(6350, 'B')};
    ASSERT_TRUE(SaveFile(path, contents[0]));
    std::mt19937 random(20240501); // the moments of the kills
    std::uniform_int_distribution<useconds_t> microseconds(0, 3000);
    // How many of the kills come in the middle of a save depends on what else the machine does: the
    // killing goes on until that many did.
    constexpr int kills = 1000;
    constexpr int mostKills = 10000;
    constexpr int inTheMiddle = 100;
    int seen[2] = {0, 0};
    int leftBehind = 0;
    for (int i = 0; i < kills || (leftBehind < inTheMiddle && i < mostKills); ++i) {
        KillASaver(path, contents, microseconds(random));
        const auto found = LoadFile(path, Whole);
        ASSERT_TRUE(found.has_value());
        ASSERT_TRUE(*found == contents[0] || *found == contents[1]) << "after kill " << i;
        ++seen[*found == contents[1]];
        leftBehind += static_cast<int>(folder.RemoveAllBut("a.dim"));
    }
    // The kills did come in the middle of saves: both contents were found, and files half written
    // lay beside the target.
    EXPECT_GT(seen[0], 0);
    EXPECT_GT(seen[1], 0);
    EXPECT_GE(leftBehind, inTheMiddle);
    RecordProperty("left_behind", leftBehind);
}

// What killed processes leave behind does not pile up: the next save in the folder removes it, but
// neither what another process may be writing now nor anything that only looks alike.
TEST_F(SaveFiles, RemovesWhatKilledProcessesLeftBehind) {
    const std::vector<std::string> others = {".quorvanta-12-x.tmp", ".quorvanta-.tmp",
                                             ".quorvanta-notes.tmp", ".quorvanta-12-0.txt",
                                             "quorvanta-12-0.tmp"};
    for (const std::string& name : others)
        folder_.Write(name, "kept");
    folder_.Write(".quorvanta-12-0.tmp", "half");
    folder_.Write(".quorvanta-98765-13.tmp", "");
    const auto twoHoursAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
    for (const std::string& name : folder_.Names())
        std::filesystem::last_write_time(folder_.Path(name), twoHoursAgo);
    folder_.Write(".quorvanta-13-0.tmp", "being written");

    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "new"));
    std::vector<std::string> left = others;
    left.insert(left.end(), {".quorvanta-13-0.tmp", "a.dim"});
    std::sort(left.begin(), left.end());
    EXPECT_EQ(folder_.Names(), left);
}

TEST_F(SaveFiles, LoadsNoMoreThanIsAskedFor) {
    folder_.Write("a.dim", "123456");
    EXPECT_EQ(LoadFile(folder_.Path("a.dim"), 4), "1234");
    EXPECT_EQ(LoadFile(folder_.Path("a.dim"), 100), "123456");
    EXPECT_FALSE(LoadFile(folder_.Path("missing"), 100).has_value());
    EXPECT_FALSE(LoadFile(folder_.Path(""), 100).has_value()); // a folder
}

} // namespace
} // namespace quorvanta
