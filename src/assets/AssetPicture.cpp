#include "assets/AssetPicture.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>

#include "platform/runtime/FileIdentity.h"
#include "platform/runtime/InputFile.h"
#include "platform/runtime/SequentialFile.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kTitle = "Tallymar";
constexpr std::array<std::string_view, 4> kExtensions = {".JPG", ".GIF", ".TIF", ".BMP"};
constexpr std::size_t kShortestPath = 3;

using namespace std::string_view_literals;
constexpr std::array<std::string_view, 5> kFirstBytes = {"\xFF\xD8\xFF"sv, "GIF8"sv, "II*\0"sv, "MM\0*"sv, "BM"sv};

std::string Screen(const fs::path& path) {
    return FromUtf8(path.string());
}

bool SameFile(const fs::path& a, const fs::path& b) {
    return UCase(Screen(a)) == UCase(Screen(b)) || IsSameFile(a, b);
}

}  // namespace

bool IsPictureName(std::string_view name) {
    const std::string upper = UCase(name);
    return std::any_of(kExtensions.begin(), kExtensions.end(),
                       [&upper](std::string_view extension) { return upper.find(extension) != std::string::npos; });
}

PictureCommand PictureCommandFor(std::string_view pictureName) {
    if (IsPictureName(pictureName)) return {"View &Picture", "View picture of Asset"};
    return {"Add &Picture", "Add picture of Asset"};
}

std::optional<std::string> AddPicture(const fs::path& images, Prompts& prompts) {
    const auto chosen =
        prompts.AskOpenFile({.Title = "Open",
                             .Filters = {{"All Files (*.*)", "*"}, {"Picture Files (*.jpg,*.gif,*.bmp)", "*.jpg;*.gif;*.bmp"}},
                             .FilterIndex = 1,
                             .InitialFolder = images,
                             .FileName = {},
                             .DefaultExtension = {}});
    if (!chosen) return std::nullopt;
    return TakePicture(*chosen, images, prompts);
}

std::optional<std::string> TakePicture(const fs::path& chosen, const fs::path& images, Prompts& prompts) {
    if (chosen.string().size() < kShortestPath) return std::nullopt;
    bool lossy = false;
    const std::string name = FromUtf8(chosen.filename().string(), &lossy);
    if (lossy || name.size() > kPictureNameLength) {
        prompts.Message("The name of the picture file may have at most " + std::to_string(kPictureNameLength) +
                            " characters of Western European writing. Give it a shorter name first.",
                        kTitle, MessageKind::Warning);
        return std::nullopt;
    }
    const fs::path target = images / chosen.filename();
    if (!SameFile(target, chosen)) {
        prompts.Message("Paths = " + Screen(chosen.parent_path()) + " - " + Screen(target) + " - " + Screen(chosen), kTitle);
        ReplaceFile(target, ReadWholeFile(chosen));
    }
    return name;
}

fs::path PicturePath(const fs::path& images, std::string_view pictureName) {
    const fs::path path = images / ToUtf8(RTrim(pictureName));
    std::error_code ignored;
    if (fs::exists(path, ignored)) return path;
    const std::string wanted = UCase(RTrim(pictureName));
    for (const fs::directory_entry& entry : fs::directory_iterator(images, ignored)) {
        if (UCase(Screen(entry.path().filename())) == wanted) return entry.path();
    }
    return path;
}

std::optional<std::string> PictureProblem(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) return "Picture file " + Screen(path) + " not found";
    // A pipe of that name would be waited for.
    if (fs::exists(status) && !fs::is_regular_file(status)) return std::string(kInvalidPicture);
    std::ifstream file(path, std::ios::binary);
    if (!file || access(path.c_str(), R_OK) != 0) return "Picture file " + Screen(path) + " permission denied";
    std::string head(4, '\0');
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<std::size_t>(file.gcount()));
    const bool known =
        std::any_of(kFirstBytes.begin(), kFirstBytes.end(), [&head](std::string_view first) { return head.starts_with(first); });
    return known ? std::nullopt : std::optional<std::string>(kInvalidPicture);
}

}  // namespace tallymar
