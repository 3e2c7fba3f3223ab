#include "platform/files.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#endif

#include "tests/support/temporary_folder.h"

#ifndef _WIN32

namespace {

/// The system's call that fails, and how often it succeeds before.
struct FailingCall {
    std::string name;
    int successes = 0;
} failingCall;

bool Fails(const char* name) {
    if (failingCall.name != name || failingCall.successes-- > 0) return false;
    errno = EIO;
    return true;
}

template <class Call>
Call* SystemCall(const char* name) {
    return reinterpret_cast<Call*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// These stand before the system's own.
extern "C" {
int fsync(int handle) {
    return Fails("fsync") ? -1 : SystemCall<int(int)>("fsync")(handle);
}
int rename(const char* from, const char* to) {
    return Fails("rename") ? -1 : SystemCall<int(const char*, const char*)>("rename")(from, to);
}
int fchmodat(int folder, const char* path, mode_t mode, int flags) {
    return Fails("fchmodat") ? -1
                             : SystemCall<int(int, const char*, mode_t, int)>("fchmodat")(folder, path, mode, flags);
}
}

#endif

namespace bellmark {
namespace {

namespace disk = std::filesystem;

class Files : public testing::Test {
  protected:
    template <typename Action>
    std::string Reason(Action action) {
        try {
            action();
        } catch (const FileError& error) {
            const std::string text = error.what();
            const std::string start = PathText(error.File()) + ": ";
            return text.substr(0, start.size()) == start ? text.substr(start.size()) : "no path in: " + text;
        }
        return "no error";
    }

    std::size_t EntryCount() const {
        return static_cast<std::size_t>(
            std::distance(disk::directory_iterator(folder_.Folder()), disk::directory_iterator()));
    }

    TemporaryFolder folder_;
    DiskFileSystem files_;
};

TEST_F(Files, ReplacesReadsAndAppends) {
    const Path path = folder_ / PathFromText("Übersicht.ini");
    const std::string content("a\0\r\n\x1A\xFF", 6);
    files_.ReplaceFile(path, "longer than what follows");
    files_.ReplaceFile(path, content);
    files_.AppendToFile(path, "b");
    EXPECT_EQ(files_.ReadBytes(path, 7), content + "b");
    EXPECT_EQ(Reason([&] { files_.ReadBytes(path, 6); }), "is larger than 6 bytes");
    files_.CopyFile(path, folder_ / "copy");
    EXPECT_EQ(files_.ReadBytes(folder_ / "copy", 7), content + "b");
    files_.Rename(folder_ / "copy", folder_ / "moved");
    files_.RemoveFile(folder_ / "moved");
    files_.RemoveFile(folder_ / "moved");
    EXPECT_EQ(files_.FileNames(folder_.Folder()), std::vector<std::string>{"Übersicht.ini"});
    EXPECT_EQ(EntryCount(), 1U) << "a temporary file was left";

    disk::resize_file(path, 3 * 1024 * 1024);
    EXPECT_EQ(Reason([&] { files_.ReadBytes(path, 2 * 1024 * 1024); }), "is larger than 2 MB");
}

TEST_F(Files, WhatIsNoPlainFileIsRefused) {
    files_.CreateFolder(folder_ / "a/b");
    files_.CreateFolder(folder_ / "a/b");
    EXPECT_EQ(Reason([&] { files_.ReadBytes(folder_ / "a", 100); }), "is a folder");
    EXPECT_EQ(Reason([&] { files_.ReplaceFile(folder_ / "a", "x"); }), "is a folder");
    EXPECT_EQ(Reason([&] { files_.RemoveFile(folder_ / "a"); }), "is a folder");
    EXPECT_EQ(Reason([&] { files_.ReadBytes(folder_ / "none", 100); }), "No such file or directory");
    EXPECT_EQ(Reason([&] { files_.ReplaceFile(folder_ / "none/x", "x"); }), "No such file or directory");
    EXPECT_EQ(Reason([&] { files_.Rename(folder_ / "none", folder_ / "x"); }), "No such file or directory");
    files_.ReplaceFile(folder_ / "plain", "x");
    EXPECT_EQ(Reason([&] { files_.RemoveFolder(folder_ / "plain"); }), "is no folder");
    EXPECT_NE(Reason([&] { files_.CreateFolder(folder_ / "plain/x"); }), "no error");
    files_.RemoveFolder(folder_ / "a");
    files_.RemoveFolder(folder_ / "a");
    EXPECT_EQ(EntryCount(), 1U);
}

TEST_F(Files, NamesAreSortedWithoutCaseAndHiddenOnesLeftOut) {
    for (const char* name : {"b.PDX", "A.pdx", "c.ddx", ".hidden.pdx"}) files_.ReplaceFile(folder_ / name, "");
    for (const char* name : {"Z", "y", ".git"}) files_.CreateFolder(folder_ / name);
    EXPECT_EQ(files_.FileNames(folder_.Folder()), (std::vector<std::string>{"A.pdx", "b.PDX", "c.ddx"}));
    EXPECT_EQ(files_.FolderNames(folder_.Folder()), (std::vector<std::string>{"y", "Z"}));
    EXPECT_EQ(FilesMatching(files_, folder_.Folder(), "*.pdx"), (std::vector<std::string>{"A.pdx", "b.PDX"}));
    EXPECT_TRUE(files_.FileNames(folder_ / "none").empty());
}

TEST(FilePatterns, Match) {
    const struct {
        std::string_view name;
        std::string_view pattern;
        bool matches;
    } cases[] = {
        {"InterimCal20120309.DDX", "interimcal*.ddx", true},
        {"Ref1_004.txt", "Ref?_???.txt", true},
        {"Ref12_004.txt", "Ref?_???.txt", false},
        {"aXbXb", "a*Xb", true},
        {"aXbXc", "a*Xb", false},
        {"µ.x", "?.x", true},
        {"", "*", true},
        {"", "?", false},
        {"", "", true},
        {"a", "", false},
        {"abc", "**c*", true},
        {"a", "a?", false},
    };
    for (const auto& pattern : cases) {
        EXPECT_EQ(MatchesPattern(pattern.name, pattern.pattern), pattern.matches) << pattern.name;
    }
    EXPECT_FALSE(MatchesPattern(std::string(2000, 'a'), "*a*a*a*a*a*a*a*a*b")) << "must also end soon";
}

#ifndef _WIN32

TEST_F(Files, LinksPermissionsAndProtectionAreKept) {
    const Path path = folder_ / "plain";
    files_.ReplaceFile(path, "old");
    disk::permissions(path, disk::perms::owner_read | disk::perms::owner_write);
    disk::create_symlink("plain", folder_ / "link");
    files_.ReplaceFile(folder_ / "link", "new");
    EXPECT_TRUE(disk::is_symlink(folder_ / "link"));
    EXPECT_EQ(files_.ReadBytes(path, 100), "new");
    EXPECT_EQ(disk::status(path).permissions(), disk::perms::owner_read | disk::perms::owner_write);
    disk::permissions(path, disk::perms::owner_read);
    EXPECT_EQ(Reason([&] { files_.ReplaceFile(path, "x"); }), "is write-protected");

    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(Reason([&] { files_.ReadBytes(folder_ / "pipe", 100); }), "is no plain file");
    EXPECT_EQ(Reason([&] { files_.ReplaceFile(folder_ / "pipe", "x"); }), "is no plain file");
}

// The limit on the size of files imitates a full disk: the write itself fails half-way.
TEST_F(Files, AFailedWriteLeavesTheOldFileAlone) {
    const Path path = folder_ / "plain";
    files_.ReplaceFile(path, "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{10000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const std::string reason = Reason([&] { files_.ReplaceFile(path, std::string(100000, 'x')); });
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previousHandler);
    EXPECT_EQ(reason, "File too large");
    EXPECT_EQ(files_.ReadBytes(path, 100), "old");
    EXPECT_EQ(EntryCount(), 1U) << "the temporary file was left";
}

// So a caller need not know which of the calls has failed: it is told, and the file is the old one.
TEST_F(Files, EachFailingCallOfAReplacementLeavesTheOldFileAlone) {
    const Path path = folder_ / "plain";
    for (const char* call : {"fsync", "fchmodat", "rename"}) {
        files_.ReplaceFile(path, "old");
        failingCall = {call, 0};
        EXPECT_EQ(Reason([&] { files_.ReplaceFile(path, "new"); }), "Input/output error") << call;
        failingCall = {};
        EXPECT_EQ(files_.ReadBytes(path, 100), "old") << call;
        EXPECT_EQ(EntryCount(), 1U) << call << " left the temporary file";
    }
    // The second flush is the folder's, after the file is in its place.
    failingCall = {"fsync", 1};
    EXPECT_EQ(Reason([&] { files_.ReplaceFile(path, "new"); }), "no error");
    failingCall = {};
    EXPECT_EQ(files_.ReadBytes(path, 100), "new");
}

#endif

}  // namespace
}  // namespace bellmark
