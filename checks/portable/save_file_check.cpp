// The saving of files without POSIX, on whatever system the checks run.
#include "core/save_file.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace quorvanta {
namespace {

constexpr std::size_t whole = 1U << 20;

class PortableFiles : public testing::Test {
  protected:
    std::string Content(const std::string& name) {
        return LoadFile(folder_.Path(name), whole).value_or("(unreadable)");
    }

    checks::TemporaryFolder folder_;
};

TEST_F(PortableFiles, AreNewOrReplaced) {
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), "old"));
    EXPECT_TRUE(SaveFile(folder_.Path("a.dim"), std::string("new\0\n", 5)));
    EXPECT_EQ(Content("a.dim"), std::string("new\0\n", 5));
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.dim"});
}

TEST_F(PortableFiles, StayAsTheyAreWhereTheSaveFails) {
    EXPECT_FALSE(SaveFile(folder_.Path("no such folder/a.dim"), "new"));
    std::filesystem::create_directory(folder_.Path("folder"));
    EXPECT_FALSE(SaveFile(folder_.Path("folder"), "new"));
    folder_.Write("a.dim", "old");
    std::filesystem::permissions(folder_.Path("a.dim"), std::filesystem::perms::owner_read);
    EXPECT_FALSE(SaveFile(folder_.Path("a.dim"), "new"));
    EXPECT_EQ(Content("a.dim"), "old");
    EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.dim", "folder"}));
}

TEST_F(PortableFiles, AreReadUpToALength) {
    folder_.Write("a.dim", "12345");
    EXPECT_EQ(LoadFile(folder_.Path("a.dim"), 3), "123");
    EXPECT_EQ(LoadFile(folder_.Path("a.dim"), 9), "12345");
    EXPECT_FALSE(LoadFile(folder_.Path("b.dim"), 9).has_value());
    EXPECT_FALSE(LoadFile(folder_.Path("."), 9).has_value());
}

TEST_F(PortableFiles, OfALinkAreThoseThatItPointsTo) {
    folder_.Write("a.dim", "old");
    std::filesystem::create_symlink("a.dim", folder_.Path("link.dim"));
    EXPECT_TRUE(SaveFile(folder_.Path("link.dim"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder_.Path("link.dim")));
    EXPECT_EQ(Content("a.dim"), "new");
}

} // namespace
} // namespace quorvanta
