#include "shell/UpdateSites.h"

#include <algorithm>
#include <charconv>
#include <regex>

#include "platform/runtime/InputFile.h"
#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr std::string_view kHttps = "https://";
constexpr std::size_t kMostSites = 4;
constexpr std::size_t kLongestFile = 4096;
constexpr std::size_t kLongestAddress = 500;

char Small(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsHostLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '.' || c == '-';
}

// A dot within, none at an end: a name without one would be a machine of the preparer's own network.
bool IsHost(std::string_view host) {
    return host.size() > 2 && std::all_of(host.begin(), host.end(), IsHostLetter) && host.front() != '.' && host.back() != '.' &&
           host.find('.') != host.npos;
}

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::optional<std::vector<int>> Numbers(std::string_view version) {
    std::vector<int> numbers;
    while (true) {
        const std::string_view part = version.substr(0, version.find('.'));
        int number = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), number);
        if (error != std::errc() || end != part.data() + part.size() || number < 0) return std::nullopt;
        numbers.push_back(number);
        if (part.size() == version.size()) return numbers;
        version.remove_prefix(part.size() + 1);
    }
}

}  // namespace

UpdateSites UpdateSites::Read(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    if (InputFile(file).Size() > kLongestFile) throw PlatformError(Failure::InvalidCall, name + ": the file is too long");
    return Parse(ReadWholeFile(file), name);
}

UpdateSites UpdateSites::Parse(std::string_view text, std::string_view name) {
    UpdateSites sites;
    int number = 0;
    const auto refuse = [&](const char* why) {
        throw PlatformError(Failure::InvalidCall, std::string(name) + ", line " + std::to_string(number) + ": " + why);
    };
    while (!text.empty()) {
        ++number;
        const std::string_view line = Trim(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.size(), text.find('\n') == text.npos ? text.size() : text.find('\n') + 1));
        if (line.empty() || line.front() == '#') continue;
        const std::string_view word = line.substr(0, line.find(' '));
        const std::string_view value = Trim(line.substr(word.size()));
        if (word == "page" && sites.Page.empty()) {
            sites.Page = value;
        } else if (word == "site" && sites.Sites.size() < kMostSites && IsHost(value)) {
            sites.Sites.emplace_back(value);
        } else {
            refuse("neither the page nor one of four sites");
        }
    }
    if (!sites.Follow(sites.Page)) refuse("the page is at none of the sites");
    return sites;
}

std::optional<std::string> HostOf(std::string_view address) {
    if (address.size() > kLongestAddress || !address.starts_with(kHttps)) return std::nullopt;
    // Anything beyond plain signs could be read in more than one way.
    if (std::any_of(address.begin(), address.end(), [](char c) { return c <= ' ' || c > '~' || c == '\\' || c == '@'; })) {
        return std::nullopt;
    }
    std::string host(address.substr(kHttps.size()));
    host.resize(std::min(host.size(), host.find_first_of("/?#")));
    std::transform(host.begin(), host.end(), host.begin(), Small);
    return IsHost(host) ? std::optional(host) : std::nullopt;
}

std::optional<std::string> UpdateSites::Follow(std::string_view address) const {
    std::string whole(Trim(address));
    if (whole.find("://") == whole.npos) whole.insert(0, kHttps);
    const auto host = HostOf(whole);
    if (!host) return std::nullopt;
    const bool isAllowed = std::any_of(Sites.begin(), Sites.end(),
                                       [&](const std::string& site) { return *host == site || host->ends_with("." + site); });
    return isAllowed ? std::optional(whole) : std::nullopt;
}

std::string VersionNamed(std::string_view html) {
    static const std::regex kMeta("<meta\\s{1,8}name=\"tallymar-version\"\\s{1,8}content=\"([0-9]{1,4}(\\.[0-9]{1,4}){0,3})\"",
                                  std::regex::icase);
    // A page says it in its head.
    constexpr std::size_t kHead = 4096;
    const std::string head(html.substr(0, kHead));
    std::smatch found;
    return std::regex_search(head, found, kMeta) ? found[1].str() : std::string();
}

bool IsNewerVersion(std::string_view version, std::string_view than) {
    const auto left = Numbers(version);
    const auto right = Numbers(than);
    return left && right && *left > *right;
}

}  // namespace tallymar
