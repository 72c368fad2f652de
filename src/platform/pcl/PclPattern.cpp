#include "platform/pcl/PclPattern.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "platform/pcl/PclBytes.h"

namespace tallymar {

namespace {

constexpr int kWhite = 255;

// A printer has eight shades; each stands for the percentages up to To.
struct PrinterShade {
    int To;
    int Percent;
};
constexpr PrinterShade kShades[] = {{0, 0}, {2, 2}, {10, 10}, {20, 15}, {35, 30}, {55, 45}, {80, 70}, {99, 90}, {100, 100}};

// Lines in one direction, and across.
constexpr int kHatchPercents[] = {0, 12, 12, 12, 12, 23, 23};

int GreyOfPercent(int percent) {
    return kWhite - kWhite * percent / 100;
}

}  // namespace

int PclPatterns::GreyOf(int kind, int id) const {
    switch (kind) {
        case White:
            return kWhite;
        case Shade: {
            const auto* shade = std::find_if(std::begin(kShades), std::end(kShades), [&](const auto& s) { return id <= s.To; });
            return GreyOfPercent(shade == std::end(kShades) ? 100 : shade->Percent);
        }
        case Hatch:
            return GreyOfPercent(id > 0 && id < static_cast<int>(std::size(kHatchPercents)) ? kHatchPercents[id] : 100);
        case Own: {
            const auto found = own_.find(id);
            return found == own_.end() ? 0 : found->second;
        }
        default:
            return 0;
    }
}

bool PclPatterns::Download(int id, std::string_view data) {
    constexpr std::size_t kHead = 8;
    if (data.size() < kHead || PclByte(data, 1) != 0 || PclByte(data, 2) != 1) return false;
    const std::size_t head = PclByte(data, 0) == 20 ? kHead + 4 : kHead;
    const std::size_t height = static_cast<std::size_t>(PclUnsigned16(data, 4));
    const std::size_t width = static_cast<std::size_t>(PclUnsigned16(data, 6));
    const std::size_t size = (width + 7) / 8 * height;
    if (size == 0 || data.size() < head + size) return false;
    std::size_t dots = 0;
    for (const char byte : data.substr(head, size)) dots += std::popcount(static_cast<unsigned char>(byte));
    own_[id] = kWhite - static_cast<int>(kWhite * std::min(dots, width * height) / (width * height));
    return true;
}

}  // namespace tallymar
