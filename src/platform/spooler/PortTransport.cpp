#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

#include "platform/runtime/PlatformError.h"
#include "platform/spooler/Transport.h"

namespace tallymar {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kToConnect{10000};
constexpr milliseconds kToGoOn{30000};  // a printer that warms up, or is out of paper for a moment
// For what the printer says back: a connection closed over unread words is broken off, and what is still on its way with it.
constexpr milliseconds kToSayGoodbye{2000};

class Socket {
 public:
    explicit Socket(int descriptor = -1) : descriptor_(descriptor) {}
    ~Socket() { Close(); }
    Socket(const Socket&) = delete;
    Socket& operator=(Socket&& other) noexcept {
        Close();
        descriptor_ = std::exchange(other.descriptor_, -1);
        return *this;
    }
    int Get() const { return descriptor_; }
    bool IsOpen() const { return descriptor_ >= 0; }
    void Close() {
        if (descriptor_ >= 0) close(descriptor_);
        descriptor_ = -1;
    }

 private:
    int descriptor_;
};

// 0 when it is ready, else the error.
int Await(int socket, short events, milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    for (;;) {
        const auto left = std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
        pollfd entry{socket, events, 0};
        const int ready = poll(&entry, 1, static_cast<int>(std::max<long>(left.count(), 0)));
        if (ready > 0) return 0;
        if (ready == 0) return ETIMEDOUT;
        if (errno != EINTR) return errno;
    }
}

class PortTransport : public Spooler::Transport {
 public:
    PortTransport(std::string host, int port) : host_(std::move(host)), port_(port) {}

    void Start(const std::string&, Spooler::Format) override;
    void Write(std::string_view bytes) override;
    void End() override;

 private:
    [[noreturn]] void Fail(const std::string& why) {
        socket_.Close();
        throw PlatformError(Failure::DeviceError, "The printer at " + host_ + ", port " + std::to_string(port_) + ", " + why);
    }
    int Connect(const addrinfo& address);

    std::string host_;
    int port_;
    Socket socket_;
};

// 0, or the error.
int PortTransport::Connect(const addrinfo& address) {
    socket_ = Socket(socket(address.ai_family, address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol));
    if (!socket_.IsOpen()) return errno;
    if (connect(socket_.Get(), address.ai_addr, address.ai_addrlen) == 0) return 0;
    if (errno != EINPROGRESS) return errno;
    if (const int error = Await(socket_.Get(), POLLOUT, kToConnect); error != 0) return error;
    int error = 0;
    socklen_t length = sizeof(error);
    if (getsockopt(socket_.Get(), SOL_SOCKET, SO_ERROR, &error, &length) != 0) return errno;
    return error;
}

void PortTransport::Start(const std::string&, Spooler::Format) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (const int error = getaddrinfo(host_.c_str(), std::to_string(port_).c_str(), &hints, &found); error != 0) {
        Fail(std::string("is not known: ") + gai_strerror(error));
    }
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> addresses(found, &freeaddrinfo);
    int error = EHOSTUNREACH;
    for (const addrinfo* address = found; address != nullptr; address = address->ai_next) {
        error = Connect(*address);
        if (error == 0) return;
    }
    if (error == ETIMEDOUT) Fail("does not answer");
    Fail(std::string("cannot be reached: ") + std::strerror(error));
}

void PortTransport::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = send(socket_.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
            if (Await(socket_.Get(), POLLOUT, kToGoOn) != 0) Fail("takes no more; what it has got may print");
        } else if (errno != EINTR) {
            Fail(std::string("broke the connection off: ") + std::strerror(errno));
        }
    }
}

void PortTransport::End() {
    if (shutdown(socket_.Get(), SHUT_WR) != 0) Fail(std::string("broke the connection off: ") + std::strerror(errno));
    const auto end = std::chrono::steady_clock::now() + kToSayGoodbye;
    char said[1024];
    for (;;) {
        const auto left = std::chrono::duration_cast<milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0 || Await(socket_.Get(), POLLIN, left) != 0) break;
        const ssize_t count = recv(socket_.Get(), said, sizeof(said), 0);
        if (count == 0) break;
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            Fail(std::string("broke the connection off: ") + std::strerror(errno));
    }
    socket_.Close();
}

}  // namespace

std::unique_ptr<Spooler::Transport> MakePortTransport(const std::string& host, int port) {
    return std::make_unique<PortTransport>(host, port);
}

}  // namespace tallymar
