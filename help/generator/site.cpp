#include "generator/site.h"

#include "core/general.h"
#include "core/help_numbers.h"
#include "generator/examplepage.h"
#include "generator/markdown.h"
#include "generator/parameterpages.h"
#include "generator/topic.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace quorvanta::help {

namespace {

constexpr i32 startNumber = 0;
constexpr i32 glossaryNumber = 55; // which each description refers to

std::string LinkHtml(const Entry& entry) {
    return "<a href=\"" + entry.File + "\">" + Escape(entry.Title) + "</a>";
}

std::string ListHtml(const std::vector<Entry>& entries) {
    std::string html = "<ul>\n";
    for (const Entry& entry : entries)
        html += "<li>" + LinkHtml(entry) + "</li>\n";
    return html + "</ul>\n";
}

// "Term: what it means", line by line; each term is a word of the index.
std::string GlossaryHtml(const std::string& lines, std::vector<Keyword>& keywords) {
    std::string html;
    std::istringstream text(lines);
    for (std::string line; std::getline(text, line);) {
        const std::size_t end = line.find(": ");
        if (end == std::string::npos)
            throw std::runtime_error("no meaning: " + line);
        const std::string term = line.substr(0, end);
        const std::string place = "term" + std::to_string(keywords.size());
        keywords.push_back({term, place});
        html += "<p><a name=\"" + place + "\"></a><b>" + Escape(term) + ".</b> " +
                ToHtml(line.substr(end + 2)).substr(std::string("<p>").size());
    }
    return html;
}

class Builder {
  public:
    explicit Builder(const std::filesystem::path& folder)
        : topics_(ReadTopics(folder / "topics")), texts_(ReadParameterTexts(folder / "parameters")),
          documents_(folder.parent_path() / "docs") {}

    Site Build() {
        for (const auto& [number, topic] : topics_)
            AddTopicPage(topic);
        site_.Contents = TopicEntry(Start());
        AddSections();
        for (const MenuItem& menu : MainMenu())
            AddMenu(menu, site_.Contents);
        RequireAllInContents();
        PageOfTopic(startNumber).Body += ListHtml(site_.Contents.Children);
        return std::move(site_);
    }

  private:
    const Topic& Start() const {
        const auto start = topics_.find(startNumber);
        if (start == topics_.end())
            throw std::runtime_error("there is no topic 0");
        return start->second;
    }

    static std::string FileOf(i32 number) { return PageOf(std::to_string(number)); }

    Entry TopicEntry(const Topic& topic) {
        return {topic.Title, FileOf(topic.Number), chapters_[topic.Number]};
    }

    Page& PageOfTopic(i32 number) { return *std::ranges::find(site_.Pages, number, &Page::Number); }

    // --- Pages --------------------------------------------------------------------------------

    void AddTopicPage(const Topic& topic) {
        Page page;
        page.File = FileOf(topic.Number);
        page.Number = topic.Number;
        page.Title = topic.Title;
        for (const std::string& keyword : topic.Keywords)
            page.Keywords.push_back({keyword, ""});
        try {
            page.Body = TopicHtml(topic, page);
        } catch (const std::exception& problem) {
            throw std::runtime_error(topic.File + ": " + problem.what());
        }
        site_.Pages.push_back(std::move(page));
    }

    std::string TopicHtml(const Topic& topic, Page& page) {
        return ToHtml(WithResults(topic.Text),
                      [&](const std::string& name, const std::string& lines) {
                          if (name == "example")
                              return ExampleHtml(lines, topic.Number);
                          if (name == "run")
                              return RunHtml(lines);
                          if (name == "simulation")
                              return SimulationHtml(lines, topic.Number);
                          if (name == "glossary")
                              return GlossaryHtml(lines, page.Keywords);
                          if (name == "parameters")
                              return AllParametersHtml(texts_, page.Keywords);
                          page.IsProof = page.IsProof || name == "document" || name == "chapters";
                          if (name == "document")
                              return ToHtml(Document(lines));
                          if (name == "chapters")
                              return ChaptersHtml(lines, topic.Number);
                          throw std::runtime_error("no such block: " + name);
                      });
    }

    // A file of docs/, without its title.
    std::string Document(const std::string& lines) const {
        std::string text = ReadText(documents_ / lines.substr(0, lines.find('\n')));
        if (text.starts_with("# "))
            text.erase(0, text.find('\n'));
        return text;
    }

    // A long document: each section becomes a page of its own under the topic.
    std::string ChaptersHtml(const std::string& lines, i32 number) {
        std::string rest = Document(lines);
        const std::string begin = "\n## ";
        const auto takeChapter = [&rest, &begin] {
            std::string chapter = rest.substr(0, rest.find(begin));
            rest.erase(0, std::min(chapter.size() + begin.size(), rest.size()));
            return chapter;
        };
        const std::string head = ToHtml(takeChapter());
        std::vector<Entry>& chapters = chapters_[number];
        while (!rest.empty()) {
            const std::string chapter = takeChapter();
            const std::size_t title = chapter.find('\n');
            const std::string file =
                "chapter-" + std::to_string(chapters.size() + 1) + "-" + FileOf(number);
            chapters.push_back({chapter.substr(0, title), file, {}});
            AddPage(chapters.back(), ToHtml(chapter.substr(title)));
            site_.Pages.back().IsProof = true;
        }
        return head + ListHtml(chapters);
    }

    void AddPage(const Entry& entry, const std::string& body) {
        Page page;
        page.File = entry.File;
        page.Title = entry.Title;
        page.Body = body;
        site_.Pages.push_back(std::move(page));
    }

    void AddOverview(const Entry& entry) { AddPage(entry, ListHtml(entry.Children)); }

    // --- Contents -----------------------------------------------------------------------------

    // The sections stand in the order of their first topics.
    void AddSections() {
        std::vector<Entry> sections;
        for (const auto& [number, topic] : topics_) {
            if (topic.Section.empty())
                continue;
            auto section = std::ranges::find(sections, topic.Section, &Entry::Title);
            if (section == sections.end()) {
                sections.push_back({topic.Section, "section-" + FileOf(number), {}});
                section = sections.end() - 1;
            }
            section->Children.push_back(TopicEntry(topic));
        }
        for (Entry& section : sections) {
            AddOverview(section);
            site_.Contents.Children.push_back(std::move(section));
        }
    }

    // A menu with analyses that have a topic, as the menu bar has it.
    void AddMenu(const MenuItem& menu, Entry& parent, const std::string& above = "") {
        const std::string path = above + StripAmpersand(menu.Caption) + " › ";
        Entry entry{StripAmpersand(menu.Caption), "", {}};
        for (const MenuItem& item : menu.Children) {
            if (item.Action == MenuAction::Submenu)
                AddMenu(item, entry, path);
            else if (item.Action == MenuAction::Test || item.Action == MenuAction::Distribution)
                AddAnalysis(item, entry, path);
        }
        const auto own = topics_.find(menu.HelpNo);
        const bool hasOwn = menu.HelpNo != 0 && own != topics_.end() && own->second.Section.empty();
        if (hasOwn) {
            entry.File = FileOf(menu.HelpNo);
            if (!entry.Children.empty())
                PageOfTopic(menu.HelpNo).Body += ListHtml(entry.Children);
        } else if (entry.Children.empty()) {
            return;
        } else {
            ++menus_;
            entry.File = "menu-" + FileOf(menus_);
            AddOverview(entry);
        }
        parent.Children.push_back(std::move(entry));
    }

    // The description begins with the way to it, which is what the search finds it by.
    void AddAnalysis(const MenuItem& item, Entry& parent, const std::string& path) {
        HelpSubject analysis;
        analysis.Topic = HelpTopic::Description;
        analysis.IsTest = ToFlag(item.Action == MenuAction::Test);
        (analysis.IsTest == True ? analysis.TestNo : analysis.DistrNo) =
            analysis.IsTest == True ? item.TestNo : item.MenuNo;
        const i32 description = HelpDescriptionOf(analysis);
        if (!topics_.contains(description))
            return;
        Entry entry{StripAmpersand(item.Caption), FileOf(description), {}};
        for (Page& page : ParameterPages(analysis, texts_, topics_.at(description).TextsOf)) {
            const std::string choices = HelpChoicesInWords(HelpSubjectOf(page.Number));
            entry.Children.push_back({"Parameters: " + choices, page.File, {}});
            site_.Pages.push_back(std::move(page));
        }
        for (const auto& [number, topic] : topics_) {
            const HelpSubject subject = HelpSubjectOf(number);
            if (subject.Topic == HelpTopic::Example && HelpDescriptionOf(subject) == description)
                entry.Children.push_back(TopicEntry(topic));
        }
        std::vector<Entry> links = entry.Children;
        if (const auto glossary = topics_.find(glossaryNumber); glossary != topics_.end())
            links.push_back(TopicEntry(glossary->second));
        std::string& body = PageOfTopic(description).Body;
        body = "<p class=\"facts\">" + Escape(path + StripAmpersand(item.Caption)) + "</p>\n" +
               body + "<h2>More</h2>\n" + ListHtml(links);
        parent.Children.push_back(std::move(entry));
    }

    static void CollectFiles(const Entry& entry, std::set<std::string>& files) {
        files.insert(entry.File);
        for (const Entry& child : entry.Children)
            CollectFiles(child, files);
    }

    void RequireAllInContents() const {
        std::set<std::string> files;
        CollectFiles(site_.Contents, files);
        for (const auto& [number, topic] : topics_)
            if (!files.contains(FileOf(number)))
                throw std::runtime_error(topic.File +
                                         ": has no section, and no menu offers its analysis");
    }

    std::map<i32, Topic> topics_;
    ParameterTexts texts_;
    std::filesystem::path documents_;
    std::map<i32, std::vector<Entry>> chapters_; // by topic
    Site site_;
    i32 menus_ = 0;
};

// --- Links --------------------------------------------------------------------------------------

// What stands in quotes after every such name.
std::vector<std::string> Quoted(const std::string& html, const std::string& name) {
    const std::string begin = name + "=\"";
    std::vector<std::string> found;
    for (std::size_t at = html.find(begin); at != std::string::npos; at = html.find(begin, at)) {
        at += begin.size();
        found.push_back(html.substr(at, html.find('"', at) - at));
    }
    return found;
}

// --- Files --------------------------------------------------------------------------------------

void WriteFile(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush())
        throw std::runtime_error("can't write " + path.string());
}

std::string PageHtml(const Page& page) {
    const std::string title = Escape(page.Title);
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head><meta charset=\"utf-8\"/><title>" + title +
           "</title></head>\n<body" + (page.IsProof ? " class=\"proof\"" : "") + ">\n<h1>" + title +
           "</h1>\n" + page.Body + "</body>\n</html>\n";
}

void WriteEntry(const Entry& entry, std::string& xml) {
    xml += "<section title=\"" + Escape(entry.Title) + "\" ref=\"" + entry.File + "\">\n";
    for (const Entry& child : entry.Children)
        WriteEntry(child, xml);
    xml += "</section>\n";
}

std::string ProjectXml(const Site& site) {
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<QtHelpProject version=\"1.0\">\n"
                      "<namespace>quorvanta.help</namespace>\n"
                      "<virtualFolder>help</virtualFolder>\n"
                      "<filterSection>\n<toc>\n";
    WriteEntry(site.Contents, xml);
    xml += "</toc>\n<keywords>\n";
    for (const Page& page : site.Pages) {
        if (page.Number != Page::noNumber)
            xml +=
                "<keyword id=\"" + std::to_string(page.Number) + "\" ref=\"" + page.File + "\"/>\n";
        for (const Keyword& keyword : page.Keywords)
            xml += "<keyword name=\"" + Escape(keyword.Word) + "\" ref=\"" + page.File +
                   (keyword.Place.empty() ? "" : "#" + keyword.Place) + "\"/>\n";
    }
    xml += "</keywords>\n<files>\n";
    for (const Page& page : site.Pages)
        xml += "<file>" + page.File + "</file>\n";
    return xml + "</files>\n</filterSection>\n</QtHelpProject>\n";
}

} // namespace

Site BuildSite(const std::filesystem::path& folder) {
    return Builder(folder).Build();
}

std::vector<std::string> BrokenLinks(const Site& site) {
    std::set<std::string> targets;
    for (const Page& page : site.Pages) {
        targets.insert(page.File);
        for (const std::string& place : Quoted(page.Body, "name"))
            targets.insert(page.File + "#" + place);
    }
    std::vector<std::string> broken;
    for (const Page& page : site.Pages)
        for (const std::string& target : Quoted(page.Body, "href"))
            if (!targets.contains(target))
                broken.push_back(page.File + ": " + target);
    return broken;
}

void WriteSite(const Site& site, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const Page& page : site.Pages)
        WriteFile(folder / page.File, PageHtml(page));
    WriteFile(folder / "quorvanta.qhp", ProjectXml(site));
}

} // namespace quorvanta::help
