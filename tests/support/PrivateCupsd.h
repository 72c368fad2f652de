#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "support/Files.h"
#include "support/PortListener.h"
#include "support/TempFolder.h"

namespace tallymar::test {

// A print service of the test's own on loopback, whose queues write each job into a file: "raw" takes everything as it is, "pdf"
// is a printer that understands PDF only, "postscript" hands everything on to one that does not know PCL. CUPS_SERVER names it
// while this lives.
class PrivateCupsd {
 public:
    // Empty, or why there is none on this machine.
    std::string Missing() const { return missing_; }

    PrivateCupsd() {
        namespace fs = std::filesystem;
        if (!fs::exists(kDaemon) || !fs::exists(kAdmin)) {
            missing_ = "no cupsd on this machine";
            return;
        }
        {
            PortListener free;  // a port that nobody else has
            port_ = free.Port();
        }
        chmod(folder_.Path().c_str(), 0755);
        for (const char* part : {"root", "run", "cache", "spool", "log", "jobs", "bin/backend", "bin/filter"}) {
            fs::create_directories(folder_ / part);
        }
        for (const char* part : {"daemon", "notifier", "cgi-bin"}) {
            if (fs::exists(std::string("/usr/lib/cups/") + part)) {
                fs::create_symlink(std::string("/usr/lib/cups/") + part, folder_ / "bin" / part);
            }
        }
        const fs::path backend = folder_ / "bin/backend/tofile";
        WriteAll(backend,
                 "#!/bin/sh\n[ $# -eq 0 ] && exit 0\nto=\"${DEVICE_URI#tofile:}/$1\"\n"
                 "if [ -n \"$6\" ]; then cat \"$6\"; else cat; fi > \"$to.part\" && mv \"$to.part\" \"$to.job\"\n");
        chmod(backend.c_str(), 0700);
        const std::string at = folder_.Path().string();
        WriteAll(folder_ / "cupsd.conf",
                 "Listen 127.0.0.1:" + std::to_string(port_) +
                     "\nBrowsing Off\nDefaultAuthType None\nWebInterface No\n<Location />\nOrder allow,deny\n"
                     "Allow all\n</Location>\n<Location /admin>\nOrder allow,deny\nAllow all\n</Location>\n"
                     "<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n");
        WriteAll(folder_ / "cups-files.conf", "FileDevice Yes\nServerRoot " + at + "/root\nServerBin " + at + "/bin\nStateDir " +
                                                  at + "/run\nCacheDir " + at + "/cache\nRequestRoot " + at +
                                                  "/spool\nAccessLog " + at + "/log/access\nErrorLog " + at +
                                                  "/log/error\nPageLog " + at + "/log/page\n");
        WriteAll(folder_ / "pdf.ppd", kPdfPrinter);
        std::string raw = kPdfPrinter;
        raw.replace(raw.find("CMD:PDF"), 7, "CMD:POSTSCRIPT");
        constexpr std::string_view kName = "*NickName: \"PDF Printer";
        raw.replace(raw.find(std::string("\n").append(kName)) + 1, kName.size(), "*NickName: \"Raw Printer");
        WriteAll(folder_ / "postscript.ppd", raw);
        id_ = Start({kDaemon, "-f", "-c", at + "/cupsd.conf", "-s", at + "/cups-files.conf"});
        const std::string server = "127.0.0.1:" + std::to_string(port_);
        setenv("CUPS_SERVER", server.c_str(), 1);
        const std::string device = "tofile:" + at + "/jobs";
        for (int tries = 0; tries < 100; ++tries) {
            if (Run({kAdmin, "-h", server, "-p", "raw", "-E", "-v", device, "-m", "raw"})) {
                for (const std::string queue : {"pdf", "postscript"}) {
                    if (!Run({kAdmin, "-h", server, "-p", queue, "-E", "-v", device, "-P", at + "/" + queue + ".ppd"}))
                        missing_ = "no queue " + queue;
                }
                return;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        missing_ = "cupsd does not run here: " + ReadAll(folder_ / "log/error");
    }
    ~PrivateCupsd() {
        unsetenv("CUPS_SERVER");
        if (id_ <= 0) return;
        kill(id_, SIGTERM);
        waitpid(id_, nullptr, 0);
    }
    PrivateCupsd(const PrivateCupsd&) = delete;
    PrivateCupsd& operator=(const PrivateCupsd&) = delete;

    // The jobs in their order, as soon as so many have come; fewer after 20 seconds.
    std::vector<std::string> Jobs(std::size_t count) const {
        std::vector<std::filesystem::path> files;
        for (int tries = 0; tries < 400 && files.size() < count; ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            files.clear();
            for (const auto& entry : std::filesystem::directory_iterator(folder_ / "jobs")) {
                if (entry.path().extension() == ".job") files.push_back(entry.path());
            }
        }
        std::sort(files.begin(), files.end(),
                  [](const auto& a, const auto& b) { return std::stoi(a.stem()) < std::stoi(b.stem()); });
        std::vector<std::string> jobs;
        for (const auto& file : files) jobs.push_back(ReadAll(file));
        return jobs;
    }

 private:
    static constexpr const char* kDaemon = "/usr/sbin/cupsd";
    static constexpr const char* kAdmin = "/usr/sbin/lpadmin";
    static constexpr const char* kPdfPrinter =
        "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
        "*LanguageEncoding: ISOLatin1\n*PCFileName: \"PDF.PPD\"\n*Product: \"(PDF)\"\n*Manufacturer: \"Tallymar\"\n"
        "*ModelName: \"PDF Printer\"\n*ShortNickName: \"PDF Printer\"\n*NickName: \"PDF Printer\"\n*PSVersion: \"(3010.000) 0\"\n"
        "*ColorDevice: False\n*DefaultColorSpace: Gray\n*LanguageLevel: \"3\"\n*FileSystem: False\n*TTRasterizer: Type42\n"
        "*1284DeviceID: \"MFG:Tallymar;CMD:PDF;MDL:PDF Printer;\"\n*cupsFilter2: \"application/pdf application/pdf 0 -\"\n"
        "*OpenUI *PageSize/Media Size: PickOne\n*OrderDependency: 10 AnySetup *PageSize\n*DefaultPageSize: Letter\n"
        "*PageSize Letter/US Letter: \"\"\n*CloseUI: *PageSize\n*OpenUI *PageRegion: PickOne\n"
        "*OrderDependency: 10 AnySetup *PageRegion\n*DefaultPageRegion: Letter\n*PageRegion Letter/US Letter: \"\"\n"
        "*CloseUI: *PageRegion\n*DefaultImageableArea: Letter\n*ImageableArea Letter/US Letter: \"0 0 612 792\"\n"
        "*DefaultPaperDimension: Letter\n*PaperDimension Letter/US Letter: \"612 792\"\n*DefaultFont: Courier\n"
        "*Font Courier: Standard \"(002.004S)\" Standard ROM\n";

    static pid_t Start(const std::vector<std::string>& command) {
        const pid_t id = fork();
        if (id != 0) return id;
        const int nowhere = open("/dev/null", O_RDWR);
        for (int descriptor : {0, 1, 2}) dup2(nowhere, descriptor);
        std::vector<char*> arguments;
        for (const std::string& argument : command) arguments.push_back(const_cast<char*>(argument.c_str()));
        arguments.push_back(nullptr);
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    static bool Run(const std::vector<std::string>& command) {
        int status = 0;
        waitpid(Start(command), &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    TempFolder folder_;
    std::string missing_;
    int port_ = 0;
    pid_t id_ = -1;
};

}  // namespace tallymar::test
