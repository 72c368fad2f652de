#pragma once

#include <cstddef>

namespace tallymar::test {

// How often this test program has asked operator new for memory.
std::size_t AllocationCount();

}  // namespace tallymar::test
