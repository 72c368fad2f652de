#pragma once

#include <memory>

#include "platform/spooler/Spooler.h"

namespace tallymar {

// How the documents of a Spooler travel to one kind of destination.
class Spooler::Transport {
 public:
    virtual ~Transport() = default;
    virtual void Start(const std::string& name, Format format) = 0;
    virtual void Write(std::string_view bytes) = 0;
    virtual void End() = 0;
    virtual void Close() {}
};

std::unique_ptr<Spooler::Transport> MakeQueueTransport(const std::string& queue);
std::unique_ptr<Spooler::Transport> MakePortTransport(const std::string& host, int port);

}  // namespace tallymar
