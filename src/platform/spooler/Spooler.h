#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/runtime/PlatformError.h"
#include "platform/spooler/PrintDestination.h"

namespace tallymar {

// Sends documents to a destination, byte for byte. A queue gets each as a job of its own, a port as a connection of its own; in
// a file they stand one behind the other, and it appears whole at Close.
//
// What is given up by the destructor is taken back as far as it can be: a queue's job is cancelled, a file stays as it was.
// Failures, each of one line that names the printer or file: DeviceError for what the print service or the printer's port does
// not take, or not within its time (10 seconds to be reached, 30 for what is sent to go on); those of FileReplacement. A
// destination that has not taken the beginning of a document is not tried again, so that eight documents to a printer that is
// switched off take no longer than one; a file that a write has failed for is not put in its place.
class Spooler {
 public:
    enum class Format { Raw, Pdf };

    explicit Spooler(const PrintDestination& to);  // connects to nothing yet
    ~Spooler();
    Spooler(const Spooler&) = delete;
    Spooler& operator=(const Spooler&) = delete;

    void StartDocument(const std::string& name, Format format = Format::Raw);
    void Write(std::string_view bytes);
    void EndDocument();
    // After the last document.
    void Close();

    class Transport;

 private:
    std::unique_ptr<Transport> transport_;
    std::optional<PlatformError> refusal_;  // of a document's beginning
};

// What to say where a destination is wanted and there is none.
PlatformError NoPrinterChosen();

}  // namespace tallymar
