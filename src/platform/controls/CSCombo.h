#pragma once

#include <string_view>

#include <QComboBox>

namespace tallymar {

// A list to choose from. Up and Down belong to the form, which moves between fields with them; Left and Right, a letter, or the
// opened list (Space, F4, Alt+Down) change the choice. The mouse wheel does only while the list is open: scrolling a form must
// not change an asset.
class CSCombo : public QComboBox {
    Q_OBJECT

 public:
    explicit CSCombo(QWidget* parent = nullptr);

    template <typename Texts>
    void Fill(const Texts& texts) {
        for (const auto& text : texts) Add(text);
    }
    void Add(std::string_view text);

    std::string Text() const;
    // Moves to the entry of that text; false, and the choice stays, when there is none.
    bool Choose(std::string_view text);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace tallymar
