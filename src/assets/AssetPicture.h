#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/prompts/Prompts.h"

// The picture of an asset: a file in the folder Images, whose bare name the asset holds.
namespace tallymar {

inline constexpr std::size_t kPictureNameLength = 32;

// Does the name tell a picture that can be shown (.jpg, .gif, .tif, .bmp, in any case, anywhere in it)?
bool IsPictureName(std::string_view name);

// The two faces of the form's picture command.
struct PictureCommand {
    std::string_view Caption;
    std::string_view Tip;
};
PictureCommand PictureCommandFor(std::string_view pictureName);

// Asks for a picture, copies it into the folder of pictures if it lies elsewhere, and returns its name; nullopt when cancelled
// or, after a message, when the asset cannot hold the name. A failed copy leaves a picture of that name as it was.
std::optional<std::string> AddPicture(const std::filesystem::path& images, Prompts& prompts);
// The same with the picture chosen already.
std::optional<std::string> TakePicture(const std::filesystem::path& chosen, const std::filesystem::path& images,
                                       Prompts& prompts);

// Where the picture of that name lies; letter case counts only where two names differ in nothing else.
std::filesystem::path PicturePath(const std::filesystem::path& images, std::string_view pictureName);

// Why the file is no picture to show, judged by its first bytes whatever its name says; nullopt when it is one. The decoder may
// still refuse it: kInvalidPicture then.
std::optional<std::string> PictureProblem(const std::filesystem::path& path);
inline constexpr std::string_view kInvalidPicture = "Invalid Placeable Picture";

}  // namespace tallymar
