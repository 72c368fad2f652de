#include "platform/mdb/JetFile.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <exception>
#include <optional>

#include "platform/mdb/JetHeader.h"
#include "platform/mdb/JetLibrary.h"
#include "platform/mdb/JetStream.h"
#include "platform/runtime/FileFailure.h"
#include "platform/runtime/PlatformError.h"
#include "platform/runtime/Windows1252.h"

namespace tallymar::mdb {

namespace fs = std::filesystem;

namespace {

constexpr rlim_t kMemory = rlim_t{256} << 20;      // of the reading process, beyond what it was born with
constexpr rlim_t kSeconds = 5;                     // of processor time, and one more for each of
constexpr std::uintmax_t kBytesASecond = 1 << 20;  // bytes in the file
constexpr int kSilence = 60 * 1000;                // milliseconds; a slow network has given something by then

// Which file it is, and when it was last written.
struct Stamp {
    explicit Stamp(const struct stat& status)
        : Device(status.st_dev),
          Node(status.st_ino),
          Size(static_cast<std::uintmax_t>(status.st_size)),
          Seconds(status.st_mtim.tv_sec),
          Nanoseconds(status.st_mtim.tv_nsec) {}

    dev_t Device;
    ino_t Node;
    std::uintmax_t Size;
    time_t Seconds;
    long Nanoseconds;

    friend bool operator==(const Stamp&, const Stamp&) = default;
};

struct Opened {
    std::optional<JetHeader> Header;  // nullopt: no Jet file
    Stamp File;
};

bool IsUnchanged(const fs::path& path, const Stamp& before) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && Stamp(status) == before;
}

Opened ReadHeader(const fs::path& path) {
    // A pipe would be waited for; it is no database in any case.
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) throw FileFailure(errno, path);
    std::array<char, JetHeader::kLength> bytes;
    struct stat status {};
    const bool regular = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
    const ssize_t length = regular ? pread(descriptor, bytes.data(), bytes.size(), 0) : 0;
    const int error = errno;
    close(descriptor);
    if (length < 0) throw FileFailure(error, path);
    return {JetHeader::Parse(std::string_view(bytes.data(), static_cast<std::size_t>(length))), Stamp(status)};
}

rlim_t AddressSpace() {
    rlim_t pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        unsigned long read = 0;
        if (std::fscanf(file, "%lu", &read) == 1) pages = read;
        std::fclose(file);
    }
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

void Limit(__rlimit_resource_t resource, rlim_t most) {
    const rlimit limit{most, most};
    setrlimit(resource, &limit);
}

// From here on the process is the reader and nothing else: it can grow no further, run no longer and write no file.
void Confine(std::uintmax_t fileSize) {
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nowhere, descriptor);
    for (const int number : {SIGPIPE, SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGXCPU, SIGTERM}) signal(number, SIG_DFL);
    // libmdb's own settings: they would change what names come out as, or have it talk.
    for (const char* name : {"MDBICONV", "MDBOPTS", "MDBPATH", "MDB_JET3_CHARSET"}) unsetenv(name);
    if (const rlim_t now = AddressSpace(); now != 0) Limit(RLIMIT_AS, now + kMemory);
    Limit(RLIMIT_CPU, kSeconds + static_cast<rlim_t>(fileSize / kBytesASecond));
    Limit(RLIMIT_FSIZE, 0);
    Limit(RLIMIT_CORE, 0);
}

[[noreturn]] void Read(const fs::path& path, std::uintmax_t size, std::span<const std::string_view> tables, int out) {
    Confine(size);
    JetStreamWriter writer(out);
    try {
        ReadTables(path, tables, writer);
        writer.Done();
    } catch (const PlatformError& failure) {
        writer.Failed(failure);
    } catch (const std::exception&) {
        // Out of memory; the end without a word says it.
    }
    _exit(0);
}

// The process that reads, gone with its owner.
class Reader {
 public:
    Reader(const fs::path& path, std::uintmax_t size, std::span<const std::string_view> tables) {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw FileFailure(errno, path);
        process_ = fork();
        if (process_ == 0) {
            close(ends[0]);
            Read(path, size, tables, ends[1]);
        }
        const int error = errno;
        close(ends[1]);
        in_ = ends[0];
        if (process_ < 0) {
            close(in_);
            throw FileFailure(error, path);
        }
    }
    ~Reader() {
        close(in_);
        kill(process_, SIGKILL);
        while (waitpid(process_, nullptr, 0) < 0 && errno == EINTR) continue;
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    // The next bytes; none at the end, nor when none come.
    std::string_view Next() {
        for (;;) {
            pollfd waiting{in_, POLLIN, 0};
            const int ready = poll(&waiting, 1, kSilence);
            if (ready == 0) return {};
            const ssize_t length = ready > 0 ? read(in_, buffer_.data(), buffer_.size()) : -1;
            if (length >= 0) return {buffer_.data(), static_cast<std::size_t>(length)};
            if (errno != EINTR) return {};
        }
    }

 private:
    pid_t process_ = -1;
    int in_ = -1;
    std::array<char, 1 << 16> buffer_{};
};

}  // namespace

bool IsJetFile(const fs::path& path) {
    try {
        return ReadHeader(path).Header.has_value();
    } catch (const PlatformError&) {
        return false;
    }
}

void ReadJetTables(const fs::path& path, std::span<const std::string_view> tables, JetRows& rows) {
    const std::string name = FromUtf8(path.filename().string()) + " ";
    const auto refuse = [&](const std::string& complaint) { throw PlatformError(Failure::UnrecognizedFormat, name + complaint); };
    const auto [header, stamp] = ReadHeader(path);
    if (!header) refuse("is no Jet database");
    if (const std::string refusal = RefusalOf(*header, stamp.Size); !refusal.empty()) refuse(refusal);

    Reader reader(fs::absolute(path), stamp.Size, tables);
    JetStreamReader stream(rows);
    try {
        for (std::string_view bytes = reader.Next(); !bytes.empty(); bytes = reader.Next()) stream.Take(bytes);
    } catch (const ReaderFailure& failure) {
        throw failure.WithPrefix(name);
    }
    if (!IsUnchanged(path, stamp)) refuse("was changed while it was read; it must be closed in every other program");
    if (!stream.IsDone()) refuse("is damaged: the attempt to read it broke off");
}

}  // namespace tallymar::mdb
