#include "platform/spooler/CupsConnection.h"
#include "platform/spooler/Transport.h"

namespace tallymar {

namespace {

class QueueTransport : public Spooler::Transport {
 public:
    explicit QueueTransport(std::string queue) : queue_(std::move(queue)) {}
    ~QueueTransport() override { GiveUp(); }

    void Start(const std::string& name, Spooler::Format format) override {
        GiveUp();
        if (!http_) http_ = RequireCups();
        job_ = cupsCreateJob(http_.get(), queue_.c_str(), name.c_str(), 0, nullptr);
        if (job_ == 0) throw CupsFailure(queue_);
        const char* type = format == Spooler::Format::Pdf ? CUPS_FORMAT_PDF : CUPS_FORMAT_RAW;
        Require(cupsStartDocument(http_.get(), queue_.c_str(), job_, name.c_str(), type, 1) == HTTP_STATUS_CONTINUE);
    }
    void Write(std::string_view bytes) override {
        Require(cupsWriteRequestData(http_.get(), bytes.data(), bytes.size()) == HTTP_STATUS_CONTINUE);
    }
    void End() override {
        Require(cupsFinishDocument(http_.get(), queue_.c_str()) <= IPP_STATUS_OK_EVENTS_COMPLETE);
        job_ = 0;
    }

 private:
    // Cancels a document that failed on its way.
    void GiveUp() {
        if (job_ == 0) return;
        // A connection in the midst of a document takes no other request.
        http_ = ConnectToCups();
        if (http_) cupsCancelJob2(http_.get(), queue_.c_str(), job_, 1);
        job_ = 0;
    }
    void Require(bool done) const {
        if (!done) throw CupsFailure(queue_);
    }

    std::string queue_;
    CupsConnection http_;
    int job_ = 0;  // not yet whole
};

}  // namespace

std::unique_ptr<Spooler::Transport> MakeQueueTransport(const std::string& queue) {
    return std::make_unique<QueueTransport>(queue);
}

}  // namespace tallymar
