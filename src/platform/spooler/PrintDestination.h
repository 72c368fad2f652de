#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace tallymar {

// Where the bytes of a print go: a queue of the print service, by its name; a printer's own port, by host and number; or a file.
class PrintDestination {
 public:
    enum class Kind { None, Queue, Port, File };

    static constexpr int kRawPort = 9100;
    static constexpr std::string_view kScheme = "socket://";  // before a port's host

    PrintDestination() = default;  // none has been chosen
    static PrintDestination Queue(std::string name);
    // Failure::InvalidCall for a host that is empty or holds other characters than names and addresses do, or no port number.
    static PrintDestination Port(std::string host, int port = kRawPort);
    static PrintDestination File(const std::filesystem::path& path);

    // As it is typed: "socket://HOST" or "socket://HOST:PORT", an address of more than one colon in brackets; a name with a slash
    // is a file's; any other is a queue's when isQueue says so, else a file's when it has a dot ("page.prn").
    // Failure::InvalidCall for what is none of these.
    static PrintDestination Parse(std::string_view text, const std::function<bool(const std::string& name)>& isQueue);

    Kind To() const { return kind_; }
    // The queue, "socket://HOST:PORT", or the file.
    std::string Text() const;

    const std::string& QueueName() const { return name_; }
    const std::string& Host() const { return name_; }
    int PortNumber() const { return port_; }
    std::filesystem::path FilePath() const { return name_; }

    friend bool operator==(const PrintDestination&, const PrintDestination&) = default;

 private:
    PrintDestination(Kind kind, std::string name, int port = 0) : kind_(kind), name_(std::move(name)), port_(port) {}

    Kind kind_ = Kind::None;
    std::string name_;  // queue, host or file
    int port_ = 0;
};

}  // namespace tallymar
