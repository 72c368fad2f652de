#include "assets/frmBookPage.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "assets/frmAssetControls.h"
#include "platform/controls/FieldRows.h"
#include "platform/controls/ScreenText.h"
#include "platform/controls/sidtEdit.h"
#include "platform/controls/sitxEdit.h"

namespace tallymar {

namespace {

struct FramePlace {
    std::string_view Frame;
    int Row;
    int Column;
    int Rows;
};
// Beside each other rather than below: the form has to fit the smallest screens with its status line.
constexpr FramePlace kFrames[] = {
    {"Method", 0, 0, 2}, {"Depreciation", 0, 1, 2}, {"Switchover", 0, 2, 1}, {"Tax Credit", 1, 2, 1}};

QGroupBox* MakeFrame(std::string_view frame, int book, AssetControls& controls, QWidget* parent) {
    auto* box = new QGroupBox(ToQString(frame), parent);
    auto* grid = new QGridLayout;
    FieldRows rows(grid);
    for (const AssetFieldDef& field : AssetFields()) {
        if (field.Place != FieldPlace::Book || field.Frame != frame) continue;
        QWidget* widget = controls.Make(field.Id, book, box);
        if (field.Kind == FieldKind::Check) {
            rows.AddWide(widget);
        } else {
            rows.Add(ToQString(field.Label), widget);
        }
    }
    auto* all = new QVBoxLayout(box);
    all->addLayout(grid);
    all->addStretch(1);
    return box;
}

template <typename Edit>
Edit* Mirror(Edit* edit, const char* name, int tab) {
    Named(edit, name, tab);
    LookReadOnly(edit);
    edit->setFocusPolicy(Qt::NoFocus);
    return edit;
}

}  // namespace

AssetMirrors::AssetMirrors(int tab, QWidget* parent) : QWidget(parent) {
    const auto width = [](AssetField field) { return static_cast<int>(MaxLengthOf(FieldDef(field))); };
    number_ = Mirror(new sitxEdit(width(AssetField::AssetNum), this), "sitxAssetNum2", tab);
    description_ = Mirror(new sitxEdit(width(AssetField::Description), this), "sitxDescription2", tab);
    inService_ = Mirror(new sidtEdit(this), "sidtInService2", tab);
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(10);
    for (const auto& [label, field] : {std::pair(AssetField::AssetNum, number_), std::pair(AssetField::Description, description_),
                                       std::pair(AssetField::InService, inService_)}) {
        auto* caption = new QLabel(ToQString(FieldDef(label).Label), this);
        Join(caption, field);
        line->addWidget(caption);
        line->addWidget(field);
    }
    line->addStretch(1);
}

void AssetMirrors::Show(const AssetEditSession::MirrorTexts& texts) {
    number_->setText(ToQString(texts.AssetNum));
    description_->setText(ToQString(texts.Description));
    description_->setCursorPosition(0);
    inService_->setText(ToQString(texts.InService));
}

frmBookPage::frmBookPage(int book, AssetControls& controls, QWidget* parent) : QWidget(parent) {
    mirrors_ = new AssetMirrors(book, this);
    auto* frames = new QGridLayout;
    frames->setHorizontalSpacing(14);
    for (const FramePlace& place : kFrames) {
        frames->addWidget(MakeFrame(place.Frame, book, controls, this), place.Row, place.Column, place.Rows, 1);
    }
    frames->setColumnStretch(3, 1);
    auto* all = new QVBoxLayout(this);
    all->addWidget(mirrors_);
    all->addLayout(frames);
    all->addStretch(1);
}

}  // namespace tallymar
