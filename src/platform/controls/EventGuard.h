#pragma once

#include <exception>
#include <functional>
#include <utility>

#include <QApplication>
#include <QString>

namespace tallymar {

// The window boundary: a failure that no command handles ends that command, never the program, and its message is shown.
class GuardedApplication : public QApplication {
    Q_OBJECT

 public:
    using Reporter = std::function<void(const QString& text)>;

    GuardedApplication(int& argc, char** argv) : QApplication(argc, argv) {}

    bool notify(QObject* receiver, QEvent* event) override;

    // Who shows the message; without one, a message box.
    void SetReporter(Reporter reporter) { reporter_ = std::move(reporter); }
    void Report(const QString& text);

 private:
    Reporter reporter_;
};

// The message of a failure: its text, and its number when it is one of the platform's.
QString MessageOf(const std::exception& failure);
// Shows it, by the application's reporter.
void ReportFailure(const std::exception& failure);

// Runs what a click or another signal stands for, and catches its failure there, before it could unwind through the toolkit's own
// frames: connect(button, &QPushButton::clicked, this, Guarded([this] { ... })).
template <typename Function>
auto Guarded(Function function) {
    return [function = std::move(function)](auto&&... arguments) mutable {
        try {
            if constexpr (std::is_invocable_v<Function&, decltype(arguments)...>) {
                function(std::forward<decltype(arguments)>(arguments)...);
            } else {
                function();
            }
        } catch (const std::exception& failure) {
            ReportFailure(failure);
        }
    };
}

}  // namespace tallymar
