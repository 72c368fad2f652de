#include "platform/runtime/Trace.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/runtime/FileFailure.h"

namespace tallymar {

namespace {

// It holds what a company holds: nobody else's to read.
constexpr mode_t kPrivate = 0600;

std::FILE* OpenFile(const std::filesystem::path& path) {
    if (path == "-") return stderr;
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, kPrivate);
    if (descriptor < 0) throw FileFailure(errno, path);
    return fdopen(descriptor, "w");
}

}  // namespace

Trace::Trace(const std::filesystem::path& path) : file_(OpenFile(path)), start_(std::chrono::steady_clock::now()) {
    // A crash must not take the last lines along.
    if (file_ != stderr) std::setvbuf(file_, nullptr, _IOLBF, BUFSIZ);
}

Trace::~Trace() {
    if (file_ != stderr) std::fclose(file_);
}

void Trace::Line(std::string_view subject, std::string_view text) {
    const std::chrono::duration<double, std::milli> since = std::chrono::steady_clock::now() - start_;
    std::fprintf(file_, "%10.3f %.*s: %.*s\n", since.count(), static_cast<int>(subject.size()), subject.data(),
                 static_cast<int>(text.size()), text.data());
}

std::unique_ptr<Trace> OpenTrace(const std::filesystem::path& path) {
    return path.empty() ? nullptr : std::make_unique<Trace>(path);
}

}  // namespace tallymar
