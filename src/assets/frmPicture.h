#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/controls/CSForm.h"

class QScrollBar;

namespace tallymar {

// "Picture of Asset": the picture at its own size, scrolled within the window.
class frmPicture : public CSForm {
    Q_OBJECT

 public:
    explicit frmPicture(std::filesystem::path path, QWidget* parent = nullptr);

    // The message to show when the file is no picture that can be shown.
    std::optional<std::string> Load();

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    void FitScrollBars();

    std::filesystem::path path_;
    QWidget* Picture1_;
    QLabel* Picture2_;
    QScrollBar* HScroll1_;
    QScrollBar* VScroll1_;
};

}  // namespace tallymar
