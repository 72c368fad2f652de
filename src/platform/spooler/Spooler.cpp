#include "platform/spooler/Spooler.h"

#include <optional>

#include "platform/runtime/FileReplacement.h"
#include "platform/runtime/PlatformError.h"
#include "platform/spooler/Transport.h"

namespace tallymar {

namespace {

class FileTransport : public Spooler::Transport {
 public:
    explicit FileTransport(std::filesystem::path path) : path_(std::move(path)) {}

    void Start(const std::string&, Spooler::Format) override {
        if (!file_) file_.emplace(path_);
    }
    void Write(std::string_view bytes) override {
        try {
            file_->Write(bytes);
        } catch (const PlatformError& failure) {
            failure_ = failure;
            throw;
        }
    }
    void End() override {}
    void Close() override {
        if (failure_) throw PlatformError(*failure_);  // part of a document is in it or is not
        if (file_) file_->Commit();
        file_.reset();
    }

 private:
    std::filesystem::path path_;
    std::optional<FileReplacement> file_;
    std::optional<PlatformError> failure_;
};

std::unique_ptr<Spooler::Transport> MakeTransport(const PrintDestination& to) {
    switch (to.To()) {
        case PrintDestination::Kind::Queue:
            return MakeQueueTransport(to.QueueName());
        case PrintDestination::Kind::Port:
            return MakePortTransport(to.Host(), to.PortNumber());
        case PrintDestination::Kind::File:
            return std::make_unique<FileTransport>(to.FilePath());
        case PrintDestination::Kind::None:
            break;
    }
    throw NoPrinterChosen();
}

}  // namespace

PlatformError NoPrinterChosen() {
    return PlatformError(Failure::DeviceError, "No printer has been chosen: choose one in Printer Setup");
}

Spooler::Spooler(const PrintDestination& to) : transport_(MakeTransport(to)) {}

Spooler::~Spooler() = default;

void Spooler::StartDocument(const std::string& name, Format format) {
    if (refusal_) throw PlatformError(*refusal_);
    try {
        transport_->Start(name, format);
    } catch (const PlatformError& failure) {
        refusal_ = failure;
        throw;
    }
}

void Spooler::Write(std::string_view bytes) {
    transport_->Write(bytes);
}

void Spooler::EndDocument() {
    transport_->End();
}

void Spooler::Close() {
    transport_->Close();
}

}  // namespace tallymar
