// The help as a whole: its pages, its contents and its index, from the topics and from the engine.
#pragma once

#include "core/types.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace quorvanta::help {

// A word of the index, and the place on its page; empty: the page itself.
struct Keyword {
    std::string Word;
    std::string Place;
};

struct Page {
    std::string File;
    i32 Number = noNumber; // the help number that opens it
    std::string Title;
    std::string Body; // HTML
    std::vector<Keyword> Keywords;
    bool IsProof = false; // it holds figures of a document, which are looked for last

    static constexpr i32 noNumber = -1;
};

// An entry of the contents.
struct Entry {
    std::string Title;
    std::string File;
    std::vector<Entry> Children;
};

struct Site {
    std::vector<Page> Pages;
    Entry Contents;
};

// The help of a folder with topics and parameters. The engine has to be started, with a
// Calculation window open. Throws std::runtime_error, naming the file, for what can't be shown.
Site BuildSite(const std::filesystem::path& folder);

// "page: target" of every link that leads nowhere.
std::vector<std::string> BrokenLinks(const Site& site);

// Writes the pages, and quorvanta.qhp, which names them to qhelpgenerator.
void WriteSite(const Site& site, const std::filesystem::path& folder);

} // namespace quorvanta::help
