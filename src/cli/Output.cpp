#include "cli/Output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "platform/runtime/FileFailure.h"
#include "platform/runtime/FileIdentity.h"

namespace tallymar::cli {

namespace {

constexpr std::size_t kPiece = 1 << 16;

[[noreturn]] void FailToPrint(int error) {
    throw FileFailure(error != 0 ? error : EIO, "standard output");
}

void Print(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            FailToPrint(errno);
        }
    }
}

bool PrintsToAFile() {
    struct stat status {};
    return fstat(STDOUT_FILENO, &status) == 0 && S_ISREG(status.st_mode);
}

// Hands on what has come together to a piece.
class Pieces {
 public:
    explicit Pieces(std::function<void(std::string_view)> to) : to_(std::move(to)) {}

    void Write(std::string_view text) {
        piece_ += text;
        if (piece_.size() >= kPiece) Flush();
    }
    void Flush() {
        to_(piece_);
        piece_.clear();
    }

 private:
    std::function<void(std::string_view)> to_;
    std::string piece_;
};

}  // namespace

bool IsStandardOutput(const std::filesystem::path& output) {
    return output == "-";
}

void RequireOutput(const std::filesystem::path& output, const std::filesystem::path& company) {
    if (output.empty() || IsStandardOutput(output)) return;
    RequireApart(output, company);
    RequireOrdinaryOutput(output);
    const FileReplacement probe(output);
}

TextOutput::TextOutput(const std::filesystem::path& output) {
    if (!IsStandardOutput(output)) file_.emplace(output);
}

void TextOutput::Write(std::string_view text) {
    if (file_) return file_->Write(text);
    std::cout << text;
}

void TextOutput::Finish() {
    if (!file_) return FlushStandardOutput();
    file_->Finish();
}

void TextOutput::PutInPlace() {
    if (file_) file_->PutInPlace();
}

void PrintWhole(const std::function<void(const std::function<void(std::string_view)>& write)>& print) {
    FlushStandardOutput();
    if (PrintsToAFile()) {
        Pieces pieces(Print);
        print([&pieces](std::string_view text) { pieces.Write(text); });
        return pieces.Flush();
    }
    const std::unique_ptr<FILE, int (*)(FILE*)> kept(std::tmpfile(), std::fclose);
    if (kept == nullptr) throw FileFailure(errno, std::filesystem::temp_directory_path());
    print([&kept](std::string_view text) {
        if (std::fwrite(text.data(), 1, text.size(), kept.get()) != text.size())
            throw FileFailure(errno, std::filesystem::temp_directory_path());
    });
    if (std::fflush(kept.get()) != 0) throw FileFailure(errno, std::filesystem::temp_directory_path());
    std::rewind(kept.get());
    std::vector<char> piece(kPiece);
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), kept.get())) Print({piece.data(), count});
}

void FlushStandardOutput() {
    errno = 0;
    std::cout.flush();
    if (!std::cout) FailToPrint(errno);
}

}  // namespace tallymar::cli
