#include "store/Disposal.h"

#include <gtest/gtest.h>

namespace tallymar {
namespace {

TEST(CheckDisposed, AnAmountDisposesExceptUnderNotice2000_4AndWithoutOneTheMarksTell) {
    const struct {
        const char* What;
        void (*Mark)(DisposalMarks&);
        bool Disposed;
    } cases[] = {{"nothing", [](DisposalMarks&) {}, false},
                 {"sold", [](DisposalMarks& m) { m.Sold = true; }, true},
                 {"abandoned", [](DisposalMarks& m) { m.Abandoned = true; }, true},
                 {"a casualty", [](DisposalMarks& m) { m.Casualty = true; }, true},
                 {"an exchange", [](DisposalMarks& m) { m.LikeKind = true; }, true},
                 {"the notice alone", [](DisposalMarks& m) { m.Notice4 = true; }, false},
                 {"an amount alone", [](DisposalMarks& m) { m.SoldAmount = Units(1); }, true},
                 {"an expense alone", [](DisposalMarks& m) { m.SoldExpense = Units(1); }, true},
                 {"negative amounts",
                  [](DisposalMarks& m) {
                      m.SoldAmount = Units(-1);
                      m.SoldExpense = Units(-1);
                  },
                  false},
                 {"an amount under the notice",
                  [](DisposalMarks& m) {
                      m.SoldAmount = Units(1);
                      m.Sold = true;
                      m.Notice4 = true;
                  },
                  false},
                 {"a sale for nothing under the notice",
                  [](DisposalMarks& m) {
                      m.Sold = true;
                      m.Notice4 = true;
                  },
                  true}};
    for (const auto& c : cases) {
        DisposalMarks marks;
        c.Mark(marks);
        EXPECT_EQ(CheckDisposed(marks), c.Disposed) << c.What;
    }
}

}  // namespace
}  // namespace tallymar
