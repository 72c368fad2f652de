#pragma once

#include <QObject>
#include <QPalette>

class QDBusVariant;

namespace tallymar {

// How the program's windows are coloured.
enum class Colors { AsDesktop, Light, Dark, HighContrast };

// What a preparer chooses between, for a menu and for what is kept of it.
struct ColorsInfo {
    Colors Choice;
    const char* Caption;
    const char* Kept;
};
inline constexpr ColorsInfo kColorsTable[] = {{Colors::AsDesktop, "As the &Desktop", "desktop"},
                                              {Colors::Light, "&Light", "light"},
                                              {Colors::Dark, "Da&rk", "dark"},
                                              {Colors::HighContrast, "&High Contrast", "contrast"}};

// Not of AsDesktop, which has no colours of its own.
QPalette PaletteOf(Colors colors);

// The look of all windows: the colours, and a frame around whatever has the keyboard, in every style. One for an application.
//
// As the desktop: its own palette where it gives one, and its wish for dark windows or high contrast where it only tells that
// (the settings of its portal), followed while the program runs.
class Looks : public QObject {
    Q_OBJECT

 public:
    explicit Looks(QObject* owner);

    void Choose(Colors colors);
    Colors Chosen() const { return chosen_; }

 private slots:
    void OnDesktopSetting(const QString& space, const QString& key, const QDBusVariant& value);

 private:
    void AskDesktop(const QString& key);
    void Take(const QString& key, uint value);
    void Show();

    Colors chosen_ = Colors::AsDesktop;
    bool desktopIsDark_ = false;
    bool desktopHasContrast_ = false;
};

}  // namespace tallymar
