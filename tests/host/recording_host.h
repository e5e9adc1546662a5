// A host for tests: it keeps what the library tells it. The suite is given once a process, so all tests share one host.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "client_log.h"
#include "zentor/zentor.h"

namespace zentor_test {

struct Report {
    void* context = nullptr;
    std::uint32_t code = 0;
    std::string message;
    std::int64_t extra1 = 0;
    std::int64_t extra2 = 0;

    bool operator==(const Report&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Report& report) {
    return out << report.code << " " << report.message << " [" << report.extra1 << "] [" << report.extra2 << "]";
}

// Every report since the last Take.
inline std::vector<Report>& Reports() {
    static std::vector<Report> reports;
    return reports;
}

inline std::vector<Report> TakeReports() { return std::exchange(Reports(), {}); }

inline void AddReport(void* context, std::uint32_t code, const char* message, std::int64_t extra1,
                      std::int64_t extra2) {
    Reports().push_back({context, code, message, extra1, extra2});
}

struct Notice {
    std::uint32_t kind;
    std::string message;
    std::uint64_t count;
    std::int64_t offset;
    std::int64_t line;
};

// Every notice since the last Take.
inline std::vector<Notice>& Notices() {
    static std::vector<Notice> notices;
    return notices;
}

// "kind xCOUNT @OFFSET:LINE", with blanks between them.
inline std::string TakeNotices() {
    std::string text;
    for (const Notice& notice : std::exchange(Notices(), {})) {
        text += (text.empty() ? "" : " ") + std::to_string(notice.kind) + "x" + std::to_string(notice.count) + "@" +
                std::to_string(notice.offset) + ":" + std::to_string(notice.line);
    }
    return text;
}

// Options that tests change for a while.
inline ZT_HostOptions& Options() {
    static ZT_HostOptions options{};
    return options;
}

// Gives the defaults back.
struct OptionsGuard {
    ~OptionsGuard() { Options() = ZT_HostOptions(); }
};

inline const ZT_HostSuite& Suite() {
    static const ZT_HostExtensions extensions = [] {
        ZT_HostExtensions table{};
        table.options = &Options();
        table.notice = [](void*, std::uint32_t kind, const char* message, std::uint64_t count, std::int64_t offset,
                          std::int64_t line) {
            Notices().push_back({kind, message, count, offset, line});
        };
        return table;
    }();
    static const ZT_HostSuite suite = [] {
        ZT_HostSuite table{};
        table.extensions = &extensions;
        table.addFormat = [](void* list, const char* extension, const char* displayName) {
            static_cast<std::vector<std::pair<std::string, std::string>>*>(list)->emplace_back(extension, displayName);
        };
        table.localizedMessage = [](void* text, const char* message, std::uint64_t length) {
            static_cast<std::string*>(text)->assign(message, length);
        };
        table.reportError = &AddReport;
        FillClientForms(table);
        return table;
    }();
    return suite;
}

// The calling thread's last exception.
inline Report LastException(bool clear) {
    Report last;
    GetLastException_1(
        &last,
        [](void* context, std::uint32_t code, const char* message, std::int64_t extra1, std::int64_t extra2) {
            *static_cast<Report*>(context) = {nullptr, code, message, extra1, extra2};
        },
        clear ? 1 : 0);
    return last;
}

// A manager for the length of a test.
class Manager {
public:
    Manager() { CreateZentor_1(&zentor_, nullptr, nullptr, "en_US", this, &Suite(), nullptr); }
    ~Manager() { DestroyZentor_1(&zentor_, this); }
    Manager(const Manager&) = delete;
    Manager& operator=(const Manager&) = delete;

    IZentor* operator->() { return zentor_; }

private:
    IZentor* zentor_ = nullptr;
};

// Code and text of the only report since the last look; "none" or "several" otherwise.
inline std::string OnlyReport() {
    const std::vector<Report> reports = TakeReports();
    if (reports.size() != 1) return reports.empty() ? "none" : "several";
    return std::to_string(reports[0].code) + " " + reports[0].message;
}

// An open document for the length of a test.
class OpenDocument {
public:
    OpenDocument(Manager& manager, const std::string& path) : manager_(manager) {
        EXPECT_EQ(manager->OpenFile(&handler_, path.c_str(), nullptr), 0U) << OnlyReport();
    }
    ~OpenDocument() { manager_->CloseFile(&handler_); }
    OpenDocument(const OpenDocument&) = delete;
    OpenDocument& operator=(const OpenDocument&) = delete;

    ISensorFileHandler* operator->() { return handler_; }

private:
    Manager& manager_;
    ISensorFileHandler* handler_ = nullptr;
};

}  // namespace zentor_test
