#pragma once

#include <map>
#include <string_view>

namespace tallymar {

// What areas and texts are filled with, as a grey: 0 black to 255 white.
class PclPatterns {
 public:
    // The kinds of ESC*v#T; ESC*c#P has the same.
    enum Kind { Black = 0, White = 1, Shade = 2, Hatch = 3, Own = 4 };

    // id: the percentage of a shade, the number of a hatch or of a pattern downloaded.
    int GreyOf(int kind, int id) const;
    // ESC*c#W: a pattern of dots. False when it is none.
    bool Download(int id, std::string_view data);

 private:
    std::map<int, int> own_;
};

}  // namespace tallymar
