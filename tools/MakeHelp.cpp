// Turns a book of the help, a folder of Markdown pages, into HTML pages and a Qt Help project that qhelpgenerator takes.
// Usage: make_help BOOK_FOLDER OUTPUT_FOLDER NAME. Run by the build; a fault in the book ends it with page and line.
//
// contents.txt: the book's title, then a page a line ("year"), indented by two blanks below the page that it belongs to.
// A page is NAME.md. It begins with its keys between two lines "---":
//     frmComputeOptions                        the page of a window
//     frmComputeOptions.silgMonth = Which Month    a control, and the heading or bold words that tell of it
//     index: Mid-quarter; Fourth quarter = 4th Quarter     words of the index, each with or without its place
// Whatever stands in bold can be such a place.
// A line {rules FILE} puts in the tables of docs/compatibility.md, without the column that names the code.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <md4c-html.h>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kVirtualFolder = "doc";
// What a text browser of the toolkit understands, and no colours: the window's palette may be a dark one.
constexpr std::string_view kStyle =
    "table { border-collapse: collapse; margin-top: 6px; margin-bottom: 6px; }"
    " th, td { border: 1px solid #808080; padding: 3px 6px; vertical-align: top; text-align: left; }"
    " p, li { line-height: 120%; }"
    " pre { margin-left: 16px; }";

struct Key {
    std::string Id;     // "frmComputeOptions.silgMonth"; empty for words of the index
    std::string Name;   // what the index shows
    std::string Place;  // heading or bold words; empty for the page's top
};

struct Page {
    std::string Name;
    int Depth = 0;
    std::string Title;
    std::string Html;
    std::vector<Key> Keys;
    std::set<std::string> Anchors;
};

[[noreturn]] void Fail(const std::string& where, const std::string& what) {
    throw std::runtime_error(where + ": " + what);
}

std::string Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == text.npos ? std::string() : std::string(text.substr(first, text.find_last_not_of(" \t\r") - first + 1));
}

std::string ReadFile(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) Fail(path.string(), "cannot be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const fs::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush()) Fail(path.string(), "cannot be written");
}

std::string Escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                result += c;
        }
    }
    return result;
}

// "Which Month?" as an address: "which-month". Letters beyond ASCII and signs fall away.
std::string Slug(std::string_view text) {
    std::string slug;
    for (const char c : text) {
        if (c >= 'A' && c <= 'Z') {
            slug += static_cast<char>(c - 'A' + 'a');
        } else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            slug += c;
        } else if (!slug.empty() && slug.back() != '-') {
            slug += '-';
        }
    }
    while (!slug.empty() && slug.back() == '-') slug.pop_back();
    return slug;
}

// The words of a piece of HTML without its tags and entities.
std::string PlainText(std::string_view html) {
    std::string text;
    for (std::size_t at = 0; at < html.size(); ++at) {
        if (html[at] == '<' || html[at] == '&') {
            at = html.find(html[at] == '<' ? '>' : ';', at);
            if (at == html.npos) break;
            if (html[at] == ';') text += ' ';
        } else {
            text += html[at];
        }
    }
    return text;
}

// Gives every heading, and all bold words, an anchor of those words; the first of a page has it.
std::string WithAnchors(const std::string& html, Page& page) {
    static constexpr std::string_view kOpenings[] = {"<h1>", "<h2>", "<h3>", "<h4>", "<strong>"};
    std::string result;
    for (std::size_t at = 0; at < html.size();) {
        const auto* opening = std::find_if(std::begin(kOpenings), std::end(kOpenings),
                                           [&](std::string_view each) { return html.compare(at, each.size(), each) == 0; });
        if (opening == std::end(kOpenings)) {
            result += html[at++];
            continue;
        }
        const std::size_t begin = at + opening->size();
        const std::string closing = "</" + std::string(opening->substr(1));
        const std::size_t end = html.find(closing, begin);
        const std::string words = html.substr(begin, end - begin);
        const std::string slug = Slug(PlainText(words));
        if (page.Anchors.insert(slug).second) result += "<a name=\"" + slug + "\"></a>";
        result += *opening;
        if (*opening == "<h1>" && page.Title.empty()) page.Title = words;
        at = begin;
    }
    return result;
}

// "page.md#place" is written so that the sources read well by themselves; a page of the other book is "../Book/page.md".
std::string WithLinks(std::string html) {
    constexpr std::string_view kHref = "href=\"";
    for (std::size_t at = html.find(kHref); at != html.npos; at = html.find(kHref, at)) {
        at += kHref.size();
        const std::size_t end = html.find('"', at);
        std::string target = html.substr(at, end - at);
        const std::size_t extension = target.find(".md");
        if (extension == target.npos) continue;
        target.replace(extension, 3, ".html");
        if (target.starts_with("../")) {
            const std::size_t slash = target.find('/', 3);
            std::string book = target.substr(3, slash - 3);
            std::transform(book.begin(), book.end(), book.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
            target = "qthelp://tallymar." + book + "/" + std::string(kVirtualFolder) + target.substr(slash);
        }
        html.replace(at, end - at, target);
    }
    return html;
}

std::string ToHtml(const std::string& markdown) {
    std::string html;
    const auto append = [](const MD_CHAR* text, MD_SIZE size, void* to) { static_cast<std::string*>(to)->append(text, size); };
    if (md_html(markdown.data(), static_cast<MD_SIZE>(markdown.size()), append, &html, MD_FLAG_TABLES | MD_FLAG_NOHTML, 0) != 0) {
        throw std::runtime_error("there is not enough memory");
    }
    return html;
}

// The sections of the rules that are odd on purpose, for those who meet them: their last column is for who reads the code.
std::string Rules(const fs::path& file) {
    std::istringstream lines(ReadFile(file));
    std::string rules;
    bool inSections = false;
    for (std::string line; std::getline(lines, line);) {
        inSections = inSections || line.starts_with("## ");
        if (!inSections) continue;
        if (line.starts_with('|')) {
            const std::size_t last = line.rfind('|', line.rfind('|') - 1);
            if (last == 0) Fail(file.string(), "a rule without its columns: " + line);
            line.erase(last + 1);
        }
        rules += line + '\n';
    }
    return rules;
}

// The text of a page with the files that it puts in.
std::string WithRules(const std::string& markdown, const fs::path& folder) {
    constexpr std::string_view kRules = "{rules ";
    std::istringstream lines(markdown);
    std::string result;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(kRules) && line.ends_with('}')) {
            line = Rules(folder / line.substr(kRules.size(), line.size() - kRules.size() - 1));
        }
        result += line + '\n';
    }
    return result;
}

Page ReadPage(const fs::path& file, const std::string& name, int depth) {
    Page page{name, depth, {}, {}, {}, {}};
    std::istringstream lines(ReadFile(file));
    std::string line;
    if (!std::getline(lines, line) || Trim(line) != "---") Fail(file.string(), "does not begin with its keys, after a line ---");
    const auto split = [](const std::string& text) {
        const std::size_t equals = text.find(" = ");
        return std::pair(Trim(text.substr(0, equals)), equals == text.npos ? std::string() : Trim(text.substr(equals + 3)));
    };
    while (std::getline(lines, line) && Trim(line) != "---") {
        constexpr std::string_view kIndex = "index:";
        if (line.starts_with(kIndex)) {
            std::istringstream words(line.substr(kIndex.size()));
            for (std::string word; std::getline(words, word, ';');) {
                auto [text, place] = split(word);
                if (!text.empty()) page.Keys.push_back({{}, std::move(text), std::move(place)});
            }
        } else if (!Trim(line).empty()) {
            auto [id, place] = split(line);
            page.Keys.push_back({std::move(id), {}, std::move(place)});
        }
    }
    page.Html = WithLinks(WithAnchors(ToHtml(WithRules({std::istreambuf_iterator<char>(lines), {}}, file.parent_path())), page));
    if (page.Title.empty()) Fail(file.string(), "has no heading");
    for (Key& key : page.Keys) {
        if (!key.Place.empty() && !page.Anchors.contains(Slug(key.Place))) {
            Fail(file.string(), "nothing in it is named \"" + key.Place + "\"");
        }
        if (key.Name.empty())
            key.Name = key.Place.empty() ? PlainText(page.Title) : key.Place + " (" + PlainText(page.Title) + ")";
    }
    return page;
}

// What a page points to must be there: a page and place of the book, or a picture.
void CheckLinks(const std::map<std::string, const Page*>& pages, const fs::path& folder, std::set<std::string>& pictures) {
    for (const auto& [name, page] : pages) {
        for (const std::string_view attribute : {"href=\"", "src=\""}) {
            for (std::size_t at = page->Html.find(attribute); at != std::string::npos; at = page->Html.find(attribute, at)) {
                at += attribute.size();
                const std::string target = page->Html.substr(at, page->Html.find('"', at) - at);
                if (target.starts_with("qthelp:")) continue;
                if (attribute == "src=\"") {
                    if (!fs::exists(folder / target)) Fail(name, "there is no picture " + target);
                    pictures.insert(target);
                    continue;
                }
                const std::size_t hash = target.find('#');
                const std::string file = target.substr(0, hash);
                const auto found = file.empty() ? pages.find(name) : pages.find(file.substr(0, file.find(".html")));
                if (found == pages.end()) Fail(name, "there is no page " + target);
                if (hash != target.npos && !found->second->Anchors.contains(target.substr(hash + 1))) {
                    Fail(name, "there is no place " + target);
                }
            }
        }
    }
}

std::string Project(const std::vector<Page>& pages, const std::string& book, const std::string& title,
                    const std::set<std::string>& pictures) {
    std::ostringstream xml;
    std::string folder = book;
    std::transform(folder.begin(), folder.end(), folder.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
    xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<QtHelpProject version=\"1.0\">\n<namespace>tallymar." << folder
        << "</namespace>\n<virtualFolder>" << kVirtualFolder << "</virtualFolder>\n<filterSection>\n<toc>\n<section title=\""
        << Escaped(title) << "\" ref=\"" << pages.front().Name << ".html\">\n";
    // The first page is the book's own; the others stand below it.
    int open = -1;
    for (const Page& page : std::span(pages).subspan(1)) {
        for (; open >= page.Depth; --open) xml << "</section>\n";
        xml << "<section title=\"" << page.Title << "\" ref=\"" << page.Name << ".html\">\n";
        open = page.Depth;
    }
    for (; open >= -1; --open) xml << "</section>\n";
    xml << "</toc>\n<keywords>\n";
    std::set<std::string> ids;
    for (const Page& page : pages) {
        for (const Key& key : page.Keys) {
            xml << "<keyword name=\"" << Escaped(key.Name) << "\"";
            if (!key.Id.empty()) {
                if (!ids.insert(key.Id).second) Fail(page.Name, key.Id + " is told of twice");
                xml << " id=\"" << Escaped(key.Id) << "\"";
            }
            xml << " ref=\"" << page.Name << ".html" << (key.Place.empty() ? std::string() : "#" + Slug(key.Place)) << "\"/>\n";
        }
    }
    xml << "</keywords>\n<files>\n";
    for (const Page& page : pages) xml << "<file>" << page.Name << ".html</file>\n";
    for (const std::string& picture : pictures) xml << "<file>" << Escaped(picture) << "</file>\n";
    xml << "</files>\n</filterSection>\n</QtHelpProject>\n";
    return xml.str();
}

void MakeBook(const fs::path& source, const fs::path& target, const std::string& book) {
    std::istringstream contents(ReadFile(source / "contents.txt"));
    std::string title;
    std::getline(contents, title);
    std::vector<Page> pages;
    for (std::string line; std::getline(contents, line);) {
        const std::size_t indent = line.find_first_not_of(' ');
        if (indent == line.npos) continue;
        const std::string name = Trim(line);
        if (indent % 2 != 0 || (pages.empty() ? indent != 0 : static_cast<int>(indent) / 2 > pages.back().Depth + 1)) {
            Fail("contents.txt", "the page " + name + " is indented too far");
        }
        pages.push_back(ReadPage(source / (name + ".md"), name, static_cast<int>(indent) / 2));
    }
    if (pages.empty()) Fail("contents.txt", "it names no page");
    std::map<std::string, const Page*> byName;
    for (const Page& page : pages) {
        if (!byName.emplace(page.Name, &page).second) Fail("contents.txt", "it names the page " + page.Name + " twice");
    }
    for (const auto& each : fs::directory_iterator(source)) {
        if (each.path().extension() == ".md" && !byName.contains(each.path().stem().string())) {
            Fail("contents.txt", "it does not name the page " + each.path().stem().string());
        }
    }
    std::set<std::string> pictures;
    CheckLinks(byName, target, pictures);
    for (const Page& page : pages) {
        WriteFile(target / (page.Name + ".html"), "<html><head><meta charset=\"utf-8\"><title>" + page.Title + "</title><style>" +
                                                      std::string(kStyle) + "</style></head><body>\n" + page.Html +
                                                      "</body></html>\n");
    }
    WriteFile(target / (book + ".qhp"), Project(pages, book, title, pictures));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: make_help BOOK_FOLDER OUTPUT_FOLDER NAME\n";
        return EXIT_FAILURE;
    }
    try {
        fs::create_directories(argv[2]);
        MakeBook(argv[1], argv[2], argv[3]);
    } catch (const std::exception& failure) {
        std::cerr << "make_help: " << argv[1] << ": " << failure.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
