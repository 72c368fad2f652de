#pragma once

#include <functional>

#include <QObject>
#include <QStringList>

namespace tallymar {

// F1, wherever the keyboard is: in a field, in an open menu, in a message. Watches the whole application while it lives.
class HelpKey : public QObject {
    Q_OBJECT

 public:
    // keys: of the field or menu item, the nearest first; message: the text of the message that it was asked in.
    using Show = std::function<void(const QStringList& keys, const QString& message)>;

    explicit HelpKey(Show show, QObject* parent = nullptr);

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    Show show_;
};

}  // namespace tallymar
