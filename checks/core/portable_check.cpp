// A build on another operating system is not blocked: what only POSIX has is asked for in one
// place.
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

TEST(Portable, OnlyTheSavingOfFilesNeedsPosix) {
    static const std::regex posix(
        "#include <(unistd\\.h|fcntl\\.h|sys/|pthread|dlfcn|pwd|strings\\.h|langinfo|termios|poll|"
        "signal\\.h|csignal|netinet|arpa)");
    const std::filesystem::path root(SOURCE_DIR);
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path());
        const std::string text(std::istreambuf_iterator<char>(file), {});
        if (std::regex_search(text, posix))
            found.insert(entry.path().lexically_relative(root).generic_string());
    }
    EXPECT_EQ(found, (std::set<std::string>{"core/file_calls.h", "core/save_file.cpp"}));
}

} // namespace
