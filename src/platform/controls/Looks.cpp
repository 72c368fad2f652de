#include "platform/controls/Looks.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace tallymar {

namespace {

// The settings portal of free desktops (freedesktop.org, XDG Desktop Portal).
const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");
const QString kContrast = QStringLiteral("contrast");
constexpr uint kPrefersDark = 1;
constexpr uint kPrefersContrast = 1;

struct RoleColor {
    QPalette::ColorRole Role;
    QRgb Normal;
    QRgb Disabled;
};

constexpr RoleColor kLight[] = {
    {QPalette::Window, 0xffefefef, 0xffefefef},      {QPalette::WindowText, 0xff000000, 0xff6b6b6b},
    {QPalette::Base, 0xffffffff, 0xfff4f4f4},        {QPalette::AlternateBase, 0xfff5f7fa, 0xfff0f0f0},
    {QPalette::Text, 0xff000000, 0xff6b6b6b},        {QPalette::PlaceholderText, 0xff666666, 0xff7a7a7a},
    {QPalette::Button, 0xffe6e6e6, 0xffe6e6e6},      {QPalette::ButtonText, 0xff000000, 0xff6b6b6b},
    {QPalette::BrightText, 0xffffffff, 0xffffffff},  {QPalette::Light, 0xffffffff, 0xffffffff},
    {QPalette::Midlight, 0xffe3e3e3, 0xffe3e3e3},    {QPalette::Mid, 0xffb0b0b0, 0xffb0b0b0},
    {QPalette::Dark, 0xff8a8a8a, 0xff9a9a9a},        {QPalette::Shadow, 0xff555555, 0xff777777},
    {QPalette::Highlight, 0xff1d5fa8, 0xff8f9bab},   {QPalette::HighlightedText, 0xffffffff, 0xffffffff},
    {QPalette::Link, 0xff0a4fa0, 0xff6b6b6b},        {QPalette::LinkVisited, 0xff6a3d9a, 0xff6b6b6b},
    {QPalette::ToolTipBase, 0xffffffdc, 0xffffffdc}, {QPalette::ToolTipText, 0xff000000, 0xff000000}};

constexpr RoleColor kDark[] = {
    {QPalette::Window, 0xff2b2d30, 0xff2b2d30},      {QPalette::WindowText, 0xfff0f0f0, 0xff9a9da1},
    {QPalette::Base, 0xff1e1f22, 0xff26282b},        {QPalette::AlternateBase, 0xff25272a, 0xff26282b},
    {QPalette::Text, 0xfff0f0f0, 0xff9a9da1},        {QPalette::PlaceholderText, 0xffa6a9ad, 0xff8a8d91},
    {QPalette::Button, 0xff3a3d41, 0xff313336},      {QPalette::ButtonText, 0xfff0f0f0, 0xff9a9da1},
    {QPalette::BrightText, 0xffffffff, 0xffffffff},  {QPalette::Light, 0xff55585c, 0xff45484c},
    {QPalette::Midlight, 0xff484b4f, 0xff3e4145},    {QPalette::Mid, 0xff202224, 0xff202224},
    {QPalette::Dark, 0xff17181a, 0xff17181a},        {QPalette::Shadow, 0xff000000, 0xff000000},
    {QPalette::Highlight, 0xff4a90e2, 0xff4b545e},   {QPalette::HighlightedText, 0xff000000, 0xffd0d0d0},
    {QPalette::Link, 0xff82b7ff, 0xff9a9da1},        {QPalette::LinkVisited, 0xffc9a0ff, 0xff9a9da1},
    {QPalette::ToolTipBase, 0xff3c3f43, 0xff3c3f43}, {QPalette::ToolTipText, 0xfff0f0f0, 0xfff0f0f0}};

constexpr RoleColor kContrastColors[] = {
    {QPalette::Window, 0xff000000, 0xff000000},      {QPalette::WindowText, 0xffffffff, 0xffa8e6a8},
    {QPalette::Base, 0xff000000, 0xff000000},        {QPalette::AlternateBase, 0xff101010, 0xff000000},
    {QPalette::Text, 0xffffffff, 0xffa8e6a8},        {QPalette::PlaceholderText, 0xffd0d0d0, 0xffa8e6a8},
    {QPalette::Button, 0xff000000, 0xff000000},      {QPalette::ButtonText, 0xffffffff, 0xffa8e6a8},
    {QPalette::BrightText, 0xffffff00, 0xffffff00},  {QPalette::Light, 0xffffffff, 0xffffffff},
    {QPalette::Midlight, 0xffd0d0d0, 0xffd0d0d0},    {QPalette::Mid, 0xffa0a0a0, 0xffa0a0a0},
    {QPalette::Dark, 0xffffffff, 0xffa0a0a0},        {QPalette::Shadow, 0xffffffff, 0xffffffff},
    {QPalette::Highlight, 0xffffff00, 0xff606000},   {QPalette::HighlightedText, 0xff000000, 0xffffffff},
    {QPalette::Link, 0xff80ffff, 0xffa8e6a8},        {QPalette::LinkVisited, 0xffffb0ff, 0xffa8e6a8},
    {QPalette::ToolTipBase, 0xff000000, 0xff000000}, {QPalette::ToolTipText, 0xffffffff, 0xffffffff}};

// Styles draw the frame of what has the keyboard faintly, not around every control, and only after a key; and edges of controls
// not at all in high contrast.
class FocusStyle : public QProxyStyle {
 public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameFocusRect) {
            // On the ground of a chosen row the usual colour would not show.
            DrawFocus(*option, *painter, option->state & State_Selected ? QPalette::HighlightedText : QPalette::Highlight);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool isField = element == PE_FrameLineEdit || element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
        const bool isFrame = element == PE_FrameMenu || element == PE_FrameGroupBox || element == PE_FrameTabWidget;
        const bool hasEdge = isField || (isFrame && IsBlack(*option));
        if (hasEdge && !(option->state & State_HasFocus)) DrawEdge(*option, *painter, element == PE_IndicatorRadioButton);
    }
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (element == CE_PushButton) DrawAround(*option, *painter);
    }
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        if (control == CC_ComboBox) DrawAround(*option, *painter);
    }

 private:
    static void DrawAround(const QStyleOption& option, QPainter& painter) {
        if (option.state & State_HasFocus) {
            DrawFocus(option, painter, QPalette::Highlight);
        } else {
            DrawEdge(option, painter, false);
        }
    }
    static void DrawFocus(const QStyleOption& option, QPainter& painter, QPalette::ColorRole role) {
        constexpr double kThick = 2.0;
        Draw(option, painter, QPen(option.palette.color(QPalette::Active, role), kThick), false);
    }
    static bool IsBlack(const QStyleOption& option) { return option.palette.color(QPalette::Window) == Qt::black; }
    // Styles make the edges of controls from the color of the window, a shade darker: on a dark one a box that is not checked
    // could not be seen, and on black nothing.
    static void DrawEdge(const QStyleOption& option, QPainter& painter, bool round) {
        constexpr int kHalf = 128;  // of 255
        if (option.palette.color(QPalette::Window).lightness() >= kHalf) return;
        const QPalette::ColorRole role = IsBlack(option) ? QPalette::WindowText : QPalette::PlaceholderText;
        QColor color = option.palette.color(role);
        if (!IsBlack(option)) color.setAlphaF(0.7F);  // quieter than text
        Draw(option, painter, QPen(color, 1.0), round);
    }
    static void Draw(const QStyleOption& option, QPainter& painter, const QPen& pen, bool round) {
        constexpr double kCorner = 2.0;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(pen);
        const double in = pen.widthF() / 2.0;
        const QRectF room = QRectF(option.rect).adjusted(in, in, -in, -in);
        const double corner = round ? room.width() / 2.0 : kCorner;
        painter.drawRoundedRect(room, corner, corner);
        painter.restore();
    }
};

}  // namespace

QPalette PaletteOf(Colors colors) {
    const auto made = [](const auto& table) {
        QPalette palette;
        for (const RoleColor& color : table) {
            palette.setColor(QPalette::All, color.Role, QColor::fromRgba(color.Normal));
            palette.setColor(QPalette::Disabled, color.Role, QColor::fromRgba(color.Disabled));
        }
        return palette;
    };
    switch (colors) {
        case Colors::Dark:
            return made(kDark);
        case Colors::HighContrast:
            return made(kContrastColors);
        case Colors::AsDesktop:
        case Colors::Light:
            break;
    }
    return made(kLight);
}

Looks::Looks(QObject* owner) : QObject(owner) {
    QApplication::setStyle(new FocusStyle);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    bus.connect(kPortal, kPortalPath, kSettings, QStringLiteral("SettingChanged"), this,
                SLOT(OnDesktopSetting(QString, QString, QDBusVariant)));
    AskDesktop(kColorScheme);
    AskDesktop(kContrast);
}

void Looks::AskDesktop(const QString& key) {
    QDBusMessage question = QDBusMessage::createMethodCall(kPortal, kPortalPath, kSettings, QStringLiteral("Read"));
    question << kAppearance << key;
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, key](QDBusPendingCallWatcher* done) {
        const QDBusPendingReply<QDBusVariant> reply = *done;
        done->deleteLater();
        if (!reply.isError()) OnDesktopSetting(kAppearance, key, reply.value());
    });
}

void Looks::OnDesktopSetting(const QString& space, const QString& key, const QDBusVariant& value) {
    if (space != kAppearance) return;
    // What is read comes in one wrapping more than what is told.
    QVariant plain = value.variant();
    if (plain.canConvert<QDBusVariant>()) plain = plain.value<QDBusVariant>().variant();
    Take(key, plain.toUInt());
}

void Looks::Take(const QString& key, uint value) {
    if (key == kColorScheme) desktopIsDark_ = value == kPrefersDark;
    if (key == kContrast) desktopHasContrast_ = value == kPrefersContrast;
    if (chosen_ == Colors::AsDesktop) Show();
}

void Looks::Choose(Colors colors) {
    chosen_ = colors;
    Show();
}

void Looks::Show() {
    if (chosen_ != Colors::AsDesktop) {
        QApplication::setPalette(PaletteOf(chosen_));
    } else if (desktopHasContrast_) {
        QApplication::setPalette(PaletteOf(Colors::HighContrast));
    } else {
        QApplication::setPalette(QPalette());  // the desktop's
        // A desktop whose own palette is dark already has said all there is to say.
        const bool isDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
        if (desktopIsDark_ && !isDark) QApplication::setPalette(PaletteOf(Colors::Dark));
    }
}

}  // namespace tallymar
