#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace tallymar::test {

// A company file in the hands of another program: plain SQLite, no code of ours.
class OtherProgram {
 public:
    explicit OtherProgram(const std::filesystem::path& path) {
        if (sqlite3_open(path.c_str(), &handle_) != SQLITE_OK) throw std::runtime_error("cannot open " + path.string());
    }
    ~OtherProgram() { sqlite3_close(handle_); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    void DefineCollation(const char* name) {
        const auto compare = [](void*, int, const void*, int, const void*) { return 0; };
        sqlite3_create_collation(handle_, name, SQLITE_UTF8, nullptr, compare);
    }

    // The rows, each with its columns separated by "|", as the sqlite3 shell prints them.
    std::vector<std::string> Run(const std::string& sql) {
        std::vector<std::string> rows;
        char* message = nullptr;
        const auto collect = [](void* out, int count, char** values, char**) {
            std::string row;
            for (int i = 0; i < count; ++i) row += (i > 0 ? "|" : "") + std::string(values[i] != nullptr ? values[i] : "NULL");
            static_cast<std::vector<std::string>*>(out)->push_back(row);
            return 0;
        };
        if (sqlite3_exec(handle_, sql.c_str(), collect, &rows, &message) != SQLITE_OK) {
            const std::string text = message != nullptr ? message : "";
            sqlite3_free(message);
            throw std::runtime_error(text + " in: " + sql);
        }
        return rows;
    }

 private:
    sqlite3* handle_ = nullptr;
};

}  // namespace tallymar::test
