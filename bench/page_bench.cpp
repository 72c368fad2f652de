// 2,000 pages of 800 texts: making the model, what it takes in memory, and each delivery of it.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <optional>

#include "platform/page/Delivery.h"
#include "platform/page/PageSearch.h"

namespace tallymar {
namespace {

constexpr int kPages = 2000;
constexpr int kRows = 50;
constexpr int kColumns = 16;

PageDocument MakePages() {
    PageDocument v;
    v.Title = "Fixed Asset Report";
    std::uint64_t amount = 1;  // unsigned, for its overflow is wanted
    for (int page = 1; page <= kPages; ++page) {
        if (page > 1) v.NewPage();
        for (int cell = 0; cell < kRows * kColumns; ++cell) {
            amount = amount * 6364136223846793005U + 1442695040888963407U;
            std::array<char, 24> text;
            auto end = std::to_chars(text.data(), text.data() + text.size(), (amount >> 40) & 0xFFFFFF).ptr;
            for (const char c : {'.', '0', '0', ' '}) *end++ = c;
            const std::string_view shown(text.data(), static_cast<std::size_t>(end - text.data()));
            v.CurrentX = 960 * (cell % kColumns + 1) - v.TextWidth(shown);
            v.CurrentY = 180 * (cell / kColumns + 6);
            v.PrintText(shown);
        }
    }
    return v;
}

const PageDocument& Pages() {
    static const PageDocument pages = MakePages();
    return pages;
}

void BuildModel(benchmark::State& state) {
    for (auto _ : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const PageDocument pages = MakePages();
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        state.counters["bytes/item"] = static_cast<double>(after - before) / (kPages * kRows * kColumns);
        state.counters["MB"] = static_cast<double>(after - before) / 1e6;
    }
}
BENCHMARK(BuildModel)->Unit(benchmark::kMillisecond);

void Search(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(SearchPages(Pages(), "1234567"));
}
BENCHMARK(Search)->Unit(benchmark::kMillisecond);

void Deliver(benchmark::State& state, const char* name) {
    const std::filesystem::path path = std::filesystem::temp_directory_path() / name;
    Pages();
    for (auto _ : state) DeliverToFile(Pages(), {}, path);
    state.counters["file MB"] = static_cast<double>(std::filesystem::file_size(path)) / 1e6;
    std::filesystem::remove(path);
}
BENCHMARK_CAPTURE(Deliver, pdf, "tallymar-page-bench.pdf")->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Deliver, text, "tallymar-page-bench.txt")->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tallymar

BENCHMARK_MAIN();
