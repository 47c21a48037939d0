#include "generator/topic.h"

#include "core/analysis_state.h"
#include "core/general.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace quorvanta::help {

namespace {

[[noreturn]] void Refuse(const std::filesystem::path& file, const std::string& what) {
    throw std::runtime_error(file.filename().string() + ": " + what);
}

// The number at the start of a text; the text is cut behind it.
i32 TakeNumber(std::string_view& text, const std::filesystem::path& path) {
    i32 number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        Refuse(path, "no number where one has to be");
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

std::string TakeLine(std::string& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string line = text.substr(0, end);
    text.erase(0, std::min(end + 1, text.size()));
    return line;
}

// The heading that a file begins with.
std::string TakeTitle(std::string& text, const std::filesystem::path& path) {
    const std::string line = TakeLine(text);
    if (!line.starts_with("# "))
        Refuse(path, "no title");
    return line.substr(2);
}

std::vector<std::string> Words(std::string_view list) {
    std::vector<std::string> words;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(';'), list.size());
        std::string_view word = list.substr(0, end);
        word.remove_prefix(std::min(word.find_first_not_of(' '), word.size()));
        words.emplace_back(word);
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return words;
}

Topic ReadTopic(const std::filesystem::path& path) {
    Topic topic;
    topic.File = path.filename().string();
    std::string_view name = topic.File;
    topic.Number = TakeNumber(name, path);
    topic.Text = ReadText(path);
    topic.Title = TakeTitle(topic.Text, path);
    for (std::string line = TakeLine(topic.Text); !line.empty(); line = TakeLine(topic.Text)) {
        const std::string_view view = line;
        if (view.starts_with("keywords: ")) {
            topic.Keywords = Words(view.substr(std::string_view("keywords: ").size()));
        } else if (view.starts_with("section: ")) {
            topic.Section = view.substr(std::string_view("section: ").size());
        } else if (view.starts_with("texts: ")) {
            std::string_view number = view.substr(std::string_view("texts: ").size());
            topic.TextsOf = TakeNumber(number, path);
        } else {
            Refuse(path, "no blank line after the title");
        }
    }
    return topic;
}

bool IsText(const std::filesystem::directory_entry& entry) {
    return entry.path().extension() == ".md";
}

} // namespace

std::string ReadText(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        Refuse(path, "can't be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

std::map<i32, Topic> ReadTopics(const std::filesystem::path& folder) {
    std::map<i32, Topic> topics;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (!IsText(entry))
            continue;
        Topic topic = ReadTopic(entry.path());
        const i32 number = topic.Number;
        if (!topics.emplace(number, std::move(topic)).second)
            Refuse(entry.path(), "another topic has this number");
    }
    return topics;
}

ParameterTexts ReadParameterTexts(const std::filesystem::path& folder) {
    ParameterTexts texts;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (!IsText(entry))
            continue;
        const std::string fileName = entry.path().stem().string();
        std::string_view name = fileName;
        const i16 kind = ToI16(TakeNumber(name, entry.path()));
        i32 description = 0;
        if (name.starts_with("-")) {
            name.remove_prefix(1);
            description = TakeNumber(name, entry.path());
        }
        std::string text = ReadText(entry.path());
        const std::string label = StripAmpersand(ParLabel(kind));
        if (TakeTitle(text, entry.path()) != label)
            Refuse(entry.path(), "the label of this kind is " + label);
        texts[{kind, description}] = text;
    }
    return texts;
}

const std::string& TextOf(const ParameterTexts& texts, i16 kind, i32 description, i32 textsOf) {
    for (const i32 number : {description, textsOf, i32{0}}) {
        const auto found = texts.find({kind, number});
        if (found != texts.end())
            return found->second;
    }
    throw std::runtime_error("no text for parameter kind " + std::to_string(kind) + ", " +
                             StripAmpersand(ParLabel(kind)));
}

} // namespace quorvanta::help
