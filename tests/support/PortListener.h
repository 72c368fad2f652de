#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tallymar::test {

// A printer's raw port on loopback: keeps what each connection has sent.
class PortListener {
 public:
    PortListener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        auto* plain = reinterpret_cast<sockaddr*>(&address);
        if (bind(socket_, plain, length) != 0 || listen(socket_, 16) != 0 || getsockname(socket_, plain, &length) != 0) {
            throw std::runtime_error("no port on loopback");
        }
        port_ = ntohs(address.sin_port);
        thread_ = std::thread([this] { Run(); });
    }
    ~PortListener() { Stop(); }
    PortListener(const PortListener&) = delete;
    PortListener& operator=(const PortListener&) = delete;

    int Port() const { return port_; }
    std::string Address() const { return "socket://127.0.0.1:" + std::to_string(port_); }
    // No more connections are taken; what those before have sent, in their order.
    std::vector<std::string> Stop() {
        if (thread_.joinable()) {
            shutdown(socket_, SHUT_RDWR);
            thread_.join();
            close(socket_);
        }
        return jobs_;
    }

 private:
    void Run() {
        for (int peer = accept(socket_, nullptr, nullptr); peer >= 0; peer = accept(socket_, nullptr, nullptr)) {
            std::string job;
            char buffer[4096];
            for (ssize_t count = 0; (count = read(peer, buffer, sizeof(buffer))) > 0;) {
                job.append(buffer, static_cast<std::size_t>(count));
            }
            close(peer);
            jobs_.push_back(job);
        }
    }

    int socket_;
    int port_ = 0;
    std::thread thread_;
    std::vector<std::string> jobs_;
};

}  // namespace tallymar::test
