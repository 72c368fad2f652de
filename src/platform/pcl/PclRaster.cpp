#include "platform/pcl/PclRaster.h"

#include <algorithm>

#include "platform/pcl/PclBytes.h"

namespace tallymar {

namespace {

// A row being unpacked, never wider than it may be.
class RowWriter {
 public:
    RowWriter(std::string row, std::size_t most) : row_(std::move(row)), most_(most) {}

    void Skip(std::size_t count) { at_ += std::min(count, most_); }
    void Put(char byte, std::size_t count = 1) {
        if (at_ >= most_) return;
        count = std::min(count, most_ - at_);
        if (row_.size() < at_ + count) row_.resize(at_ + count);
        std::fill_n(row_.begin() + static_cast<std::ptrdiff_t>(at_), count, byte);
        at_ += count;
    }
    void Put(std::string_view bytes) {
        for (const char byte : bytes) Put(byte);
    }
    std::string Take() { return std::move(row_); }

 private:
    std::string row_;
    std::size_t most_;
    std::size_t at_ = 0;
};

std::string FromRunLengths(std::string_view data, std::size_t most) {
    RowWriter row({}, most);
    for (std::size_t i = 0; i + 1 < data.size(); i += 2) row.Put(data[i + 1], static_cast<std::size_t>(PclByte(data, i)) + 1);
    return row.Take();
}

std::string FromPackedBits(std::string_view data, std::size_t most) {
    RowWriter row({}, most);
    for (std::size_t i = 0; i < data.size();) {
        const int control = PclSigned8(data, i++);
        if (control == -128) continue;
        if (control >= 0) {
            const std::string_view literal = data.substr(i, static_cast<std::size_t>(control) + 1);
            row.Put(literal);
            i += literal.size();
        } else if (i < data.size()) {
            row.Put(data[i++], static_cast<std::size_t>(1 - control));
        }
    }
    return row.Take();
}

// A number that goes on as long as its bytes are full.
std::size_t Continued(std::string_view data, std::size_t& at, int value, int full) {
    std::size_t sum = static_cast<std::size_t>(value);
    if (value != full) return sum;
    while (at < data.size()) {
        const int more = PclByte(data, at++);
        sum += static_cast<std::size_t>(more);
        if (more != 255) break;
    }
    return sum;
}

std::string FromDelta(std::string_view data, const std::string& seed, std::size_t most) {
    RowWriter row(seed, most);
    for (std::size_t i = 0; i < data.size();) {
        const int control = PclByte(data, i++);
        row.Skip(Continued(data, i, control & 0x1F, 0x1F));
        const std::string_view literal = data.substr(std::min(i, data.size()), static_cast<std::size_t>(control >> 5) + 1);
        row.Put(literal);
        i += literal.size();
    }
    return row.Take();
}

}  // namespace

bool PclRaster::KnowsMethod(int method) {
    return (method >= 0 && method <= 3) || method == 5;
}

void PclRaster::AddRow(std::string_view data, int method) {
    switch (method) {
        case 1:
            return AddDecoded(FromRunLengths(data, MostStride()));
        case 2:
            return AddDecoded(FromPackedBits(data, MostStride()));
        case 3:
            return AddDecoded(FromDelta(data, seed_, MostStride()));
        case 5:
            return AddMixed(data);
        default:
            return AddDecoded(std::string(data.substr(0, MostStride())));
    }
}

void PclRaster::AddMixed(std::string_view data) {
    constexpr std::size_t kHead = 3;  // what follows, and how many bytes or rows
    constexpr int kEmptyRows = 4;
    constexpr int kEqualRows = 5;
    while (data.size() >= kHead) {
        const int method = PclByte(data, 0);
        const int count = PclUnsigned16(data, 1);
        data.remove_prefix(kHead);
        if (method <= 3) {
            const std::string_view row = data.substr(0, static_cast<std::size_t>(count));
            AddRow(row, method);
            data.remove_prefix(row.size());
        } else if (method == kEmptyRows) {
            SkipRows(count);
        } else if (method == kEqualRows) {
            for (int i = 0; i < count && height_ < mostHeight_; ++i) AddDecoded(seed_);
        } else {
            return;
        }
    }
}

void PclRaster::AddDecoded(std::string row) {
    if (height_ >= mostHeight_) return;
    seed_ = std::move(row);
    const std::size_t used = seed_.find_last_not_of('\0') + 1;
    if (used > 0) {
        stride_ = std::max(stride_, used);
        rows_.push_back({height_, seed_.substr(0, used)});
    }
    ++height_;
}

void PclRaster::SkipRows(int count) {
    height_ += std::clamp(count, 0, mostHeight_ - height_);
    seed_.clear();
}

PclBitmap PclRaster::Take() {
    PclBitmap bitmap;
    if (!rows_.empty()) {
        bitmap.Width = std::min(static_cast<int>(stride_ * 8), mostWidth_);
        bitmap.Height = rows_.back().Y + 1;
        bitmap.Rows.assign(stride_ * static_cast<std::size_t>(bitmap.Height), '\0');
        for (const Row& row : rows_)
            row.Dots.copy(bitmap.Rows.data() + stride_ * static_cast<std::size_t>(row.Y), row.Dots.size());
    }
    rows_.clear();
    return bitmap;
}

}  // namespace tallymar
