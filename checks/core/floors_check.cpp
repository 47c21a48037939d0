// The floors of src/: no two units depend on each other in a loop, directly or not. A unit is a
// header with the sources that define what it declares, so what holds here holds for the link too.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

using Graph = std::map<std::string, std::set<std::string>>;

// The includes of one file of src/, by their names there.
struct Source {
    std::set<std::string> Includes;
    std::string Associated; // the header that it names as its own, if that has another name
};

using Sources = std::map<std::string, Source>; // by name under src/, "core/run.cpp"

Source ReadSource(const std::string& text) {
    static const std::regex include("(?:^|\n)#include \"([^\"]+)\"( // IWYU pragma: associated)?");
    Source source;
    for (std::sregex_iterator at(text.begin(), text.end(), include), end; at != end; ++at) {
        source.Includes.insert((*at)[1]);
        if ((*at)[2].matched)
            source.Associated = (*at)[1];
    }
    return source;
}

Sources ReadSources() {
    const std::filesystem::path root(SOURCE_DIR);
    Sources sources;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h")
            continue;
        std::ifstream file(entry.path());
        const std::string text(std::istreambuf_iterator<char>(file), {});
        sources[entry.path().lexically_relative(root).generic_string()] = ReadSource(text);
    }
    return sources;
}

std::string WithoutExtension(const std::string& file) {
    return file.substr(0, file.rfind('.'));
}

// The unit of a file; empty for a source without a header.
std::string UnitOf(const std::string& file, const Sources& sources) {
    const std::string unit = WithoutExtension(file);
    if (sources.contains(unit + ".h"))
        return unit;
    return WithoutExtension(sources.at(file).Associated);
}

Graph UnitGraph(const Sources& sources) {
    Graph graph;
    for (const auto& [file, source] : sources) {
        const std::string unit = UnitOf(file, sources);
        if (unit.empty())
            continue;
        auto& needs = graph[unit];
        for (const std::string& header : source.Includes)
            if (sources.contains(header) && UnitOf(header, sources) != unit)
                needs.insert(UnitOf(header, sources));
    }
    return graph;
}

// Walks a graph in depth and keeps the first circle that it meets.
class CircleSearch {
  public:
    explicit CircleSearch(const Graph& graph) : graph_(graph) {
        for (const auto& [unit, needs] : graph)
            Visit(unit);
    }

    // The units on the way round, the first one again at the end; empty without a circle.
    const std::vector<std::string>& Circle() const { return circle_; }

  private:
    void Visit(const std::string& unit) {
        if (!circle_.empty() || done_.contains(unit))
            return;
        const auto before = std::ranges::find(way_, unit);
        if (before != way_.end()) {
            circle_.assign(before, way_.end());
            circle_.push_back(unit);
            return;
        }
        way_.push_back(unit);
        if (const auto node = graph_.find(unit); node != graph_.end())
            for (const std::string& need : node->second)
                Visit(need);
        way_.pop_back();
        done_.insert(unit);
    }

    const Graph& graph_;
    std::vector<std::string> way_;
    std::set<std::string> done_;
    std::vector<std::string> circle_;
};

std::string CircleIn(const Sources& sources) {
    const Graph graph = UnitGraph(sources);
    const CircleSearch search(graph);
    std::string text;
    for (const std::string& unit : search.Circle())
        text += (text.empty() ? "" : " -> ") + unit;
    return text;
}

TEST(Floors, NoUnitNeedsItself) {
    const Sources sources = ReadSources();
    EXPECT_GT(UnitGraph(sources).size(), 100U);
    EXPECT_EQ(CircleIn(sources), "");
}

// Otherwise what it defines could be needed from below without an include that shows it.
TEST(Floors, EverySourceHasAHeader) {
    const Sources sources = ReadSources();
    for (const auto& [file, source] : sources) {
        const bool isProgram = file == "ui/main.cpp" || file == "validation/main.cpp";
        EXPECT_EQ(UnitOf(file, sources).empty(), isProgram) << file;
        if (!source.Associated.empty()) {
            EXPECT_TRUE(sources.contains(source.Associated)) << file;
        }
    }
}

TEST(Floors, ACircleOfSourcesIsFound) {
    Sources sources;
    sources["core/state.h"] = {};
    sources["core/low.h"] = {};
    sources["core/low.cpp"] = ReadSource("#include \"core/low.h\"\n\n#include \"core/state.h\"\n");
    sources["core/high.h"] = ReadSource("#include \"core/low.h\"\n");
    sources["core/high.cpp"] = ReadSource("// Opens.\n#include \"core/high.h\"\n#include <map>\n");
    EXPECT_EQ(CircleIn(sources), "");

    // No header includes another that includes it; the link is a circle all the same.
    sources["core/middle.h"] = {};
    sources["core/middle.cpp"] =
        ReadSource("#include \"core/middle.h\"\n\n#include \"core/high.h\"\n");
    sources["core/low.cpp"].Includes.insert("core/middle.h");
    EXPECT_EQ(CircleIn(sources), "core/high -> core/low -> core/middle -> core/high");
}

TEST(Floors, ASourceOfAnotherNameBelongsToTheHeaderThatItNames) {
    Sources sources;
    sources["core/menu.h"] = {};
    sources["core/high.h"] = {};
    sources["core/high.cpp"] = ReadSource("#include \"core/high.h\"\n\n#include \"core/menu.h\"\n");
    sources["core/menu_rows.cpp"] = ReadSource(
        "#include \"core/menu.h\" // IWYU pragma: associated\n\n#include \"core/high.h\"\n");
    EXPECT_EQ(UnitOf("core/menu_rows.cpp", sources), "core/menu");
    EXPECT_EQ(CircleIn(sources), "core/high -> core/menu -> core/high");
    sources["core/menu_rows.cpp"].Associated.clear();
    EXPECT_EQ(UnitOf("core/menu_rows.cpp", sources), "");
}

} // namespace
