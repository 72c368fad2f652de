#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallymar {

// Where the update window may go: the delivered text file update.txt, or one of the firm's own. A line each:
//     page https://update.tallymar.example/     the page that the window opens with
//     site update.tallymar.example              a house whose pages may be shown, by its name or the end of it
// '#' begins a comment. A file that cannot be read so fails with InvalidCall, naming the line.
struct UpdateSites {
    std::string Page;
    std::vector<std::string> Sites;

    static UpdateSites Read(const std::filesystem::path& file);
    static UpdateSites Parse(std::string_view text, std::string_view name);

    // An address as it was chosen or typed, made whole ("update.tallymar.example/news" gets its https://). nullopt for one that
    // may not be followed: any other protocol, a user or a port in it, or a host that is none of the sites and lies in none.
    std::optional<std::string> Follow(std::string_view address) const;
};

// The host of an https address that has neither user nor port, in small letters; nullopt for anything else.
std::optional<std::string> HostOf(std::string_view address);

// What a page says the current release is, in <meta name="tallymar-version" content="1.5">; empty when it says nothing.
std::string VersionNamed(std::string_view html);
// Compares numbers between points: 1.10 is newer than 1.9, and 1.4.1 than 1.4. What is no version is never newer.
bool IsNewerVersion(std::string_view version, std::string_view than);

}  // namespace tallymar
