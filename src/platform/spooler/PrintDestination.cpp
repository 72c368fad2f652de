#include "platform/spooler/PrintDestination.h"

#include <charconv>

#include "platform/runtime/PlatformError.h"

namespace tallymar {

namespace {

constexpr int kLastPort = 65535;

constexpr std::string_view kHostCharacters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_:%";

PrintDestination ParsePort(std::string_view text) {
    std::string_view rest = text.substr(PrintDestination::kScheme.size());
    while (rest.ends_with('/')) rest.remove_suffix(1);
    std::string_view host = rest;
    std::string_view number;
    if (rest.starts_with('[')) {
        const std::size_t end = rest.find(']');
        if (end == std::string_view::npos)
            throw PlatformError(Failure::InvalidCall, "\"" + std::string(text) + "\" lacks a \"]\"");
        host = rest.substr(1, end - 1);
        number = rest.substr(end + 1);
    } else if (const std::size_t colon = rest.rfind(':'); colon != std::string_view::npos) {
        host = rest.substr(0, colon);
        number = rest.substr(colon);
    }
    int port = PrintDestination::kRawPort;
    if (!number.empty()) {
        const auto [end, error] = std::from_chars(number.data() + 1, number.data() + number.size(), port);
        if (!number.starts_with(':') || error != std::errc() || end != number.data() + number.size()) port = 0;
    }
    return PrintDestination::Port(std::string(host), port);
}

}  // namespace

PrintDestination PrintDestination::Queue(std::string name) {
    return PrintDestination(Kind::Queue, std::move(name));
}

PrintDestination PrintDestination::Port(std::string host, int port) {
    if (host.empty() || host.find_first_not_of(kHostCharacters) != std::string::npos) {
        throw PlatformError(Failure::InvalidCall, "\"" + host + "\" is no name or address of a printer");
    }
    if (port < 1 || port > kLastPort) throw PlatformError(Failure::InvalidCall, "A printer's port is a number from 1 to 65535");
    return PrintDestination(Kind::Port, std::move(host), port);
}

PrintDestination PrintDestination::File(const std::filesystem::path& path) {
    return PrintDestination(Kind::File, path.string());
}

PrintDestination PrintDestination::Parse(std::string_view text, const std::function<bool(const std::string& name)>& isQueue) {
    if (text.starts_with(kScheme)) return ParsePort(text);
    const std::string name(text);
    if (name.find('/') != std::string::npos) return File(name);
    if (!name.empty() && isQueue(name)) return Queue(name);
    if (name.find('.') != std::string::npos) return File(name);
    throw PlatformError(Failure::InvalidCall, "There is no printer \"" + name + "\"; a file of that name is ./" + name);
}

std::string PrintDestination::Text() const {
    if (kind_ != Kind::Port) return name_;
    const bool isBracketed = name_.find(':') != std::string::npos;
    return std::string(kScheme) + (isBracketed ? "[" + name_ + "]" : name_) + ":" + std::to_string(port_);
}

}  // namespace tallymar
