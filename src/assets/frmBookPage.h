#pragma once

#include <QWidget>

#include "assets/AssetEditSession.h"

class QLineEdit;

namespace tallymar {

class AssetControls;

// The read-only repetition of the asset's identity with which every tab but the first begins.
class AssetMirrors : public QWidget {
 public:
    AssetMirrors(int tab, QWidget* parent);
    void Show(const AssetEditSession::MirrorTexts& texts);

 private:
    QLineEdit* number_;
    QLineEdit* description_;
    QLineEdit* inService_;
};

// The tab of one book: its fields in their four frames.
class frmBookPage : public QWidget {
    Q_OBJECT

 public:
    frmBookPage(int book, AssetControls& controls, QWidget* parent);
    AssetMirrors* Mirrors() const { return mirrors_; }

 private:
    AssetMirrors* mirrors_;
};

}  // namespace tallymar
