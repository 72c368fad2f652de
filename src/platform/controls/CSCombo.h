#pragma once

#include <string_view>

#include <QComboBox>

namespace tallymar {

// A list to choose from. Up and Down belong to the form, which moves between fields with them; Left and Right, a letter, or the
// opened list (Space, F4, Alt+Down) change the choice. The opened list says in grey what its codes mean. The mouse wheel does
// only while the list is open: scrolling a form must not change an asset.
class CSCombo : public QComboBox {
    Q_OBJECT

 public:
    explicit CSCombo(QWidget* parent = nullptr);

    template <typename Texts>
    void Fill(const Texts& texts) {
        for (const auto& text : texts) Add(text);
    }
    void Add(std::string_view text);

    // What an entry means, for the opened list and for those who hear it; of an entry that the list does not have, nothing.
    template <typename Meanings>
    void Explain(const Meanings& meanings) {
        for (const auto& [code, meaning] : meanings) ExplainOne(code, meaning);
    }

    std::string Text() const;
    // Moves to the entry of that text; false, and the choice stays, when there is none.
    bool Choose(std::string_view text);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showPopup() override;

 private:
    void ExplainOne(std::string_view entry, std::string_view meaning);
};

}  // namespace tallymar
