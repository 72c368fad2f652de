#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace tallymar::sheets {

// One part of a workbook, as bytes from its start.
class PartStream {
 public:
    virtual ~PartStream() = default;
    virtual std::size_t Read(char* buffer, std::size_t room) = 0;  // 0 at the end
    virtual double ShareRead() const = 0;                          // 0 to 1
};

// A workbook is a file of named parts.
class Parts {
 public:
    virtual ~Parts() = default;
    // nullptr when there is no such part.
    virtual std::unique_ptr<PartStream> Open(const std::string& name) = 0;
};

}  // namespace tallymar::sheets
