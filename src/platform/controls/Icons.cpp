#include "platform/controls/Icons.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace tallymar {

namespace {

QPixmap Drawn(QByteArray svg, const QColor& color, int side) {
    svg.replace("#000000", color.name().toLatin1());
    QSvgRenderer renderer(svg);
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter);
    return picture;
}

}  // namespace

QIcon TintedIcon(const QString& name, const QPalette& palette) {
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray svg = file.readAll();
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64}) {
        icon.addPixmap(Drawn(svg, palette.color(QPalette::Active, QPalette::WindowText), side), QIcon::Normal);
        icon.addPixmap(Drawn(svg, palette.color(QPalette::Disabled, QPalette::WindowText), side), QIcon::Disabled);
    }
    return icon;
}

}  // namespace tallymar
