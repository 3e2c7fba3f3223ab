// Two users of one machine on one program folder.

#include "platform/instance_lock.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/support/temporary_folder.h"

namespace bellmark {
namespace {

using std::filesystem::perms;

/// Acts as an ordinary user, who is bound by file permissions, unlike the administrator.
class AsOrdinaryUser {
  public:
    AsOrdinaryUser() : before_(geteuid()) {
        constexpr uid_t nobody = 65534;
        if (before_ == 0) {
            EXPECT_EQ(seteuid(nobody), 0);
        }
    }
    ~AsOrdinaryUser() { EXPECT_EQ(seteuid(before_), 0); }

  private:
    uid_t before_;
};

struct LockCase {
    const char* name;
    bool fileIsThere;
    perms ofFile;
    perms ofFolder;
    bool canBeLocked;
};

constexpr perms readOnly = perms::owner_read | perms::group_read | perms::others_read;
constexpr perms everything = perms::all;
constexpr perms lookOnly = readOnly | perms::owner_exec | perms::group_exec | perms::others_exec;

TEST(InstanceLock, HoldsBetweenUsersWhateverTheyMayDo) {
    const LockCase cases[] = {
        {"no file yet", false, {}, everything, true},
        {"a file that may be written", true, everything, everything, true},
        {"a file that may only be read", true, readOnly, everything, true},
        {"a file that may not even be read", true, perms::none, everything, false},
        {"a folder that may only be read", false, {}, lookOnly, true},
    };
    for (const auto& [name, fileIsThere, ofFile, ofFolder, canBeLocked] : cases) {
        SCOPED_TRACE(name);
        const TemporaryFolder folder;
        const Path file = folder / "Bellmark.lock";
        if (fileIsThere) {
            std::ofstream(file) << "";
            std::filesystem::permissions(file, ofFile);
        }
        std::filesystem::permissions(folder.Folder(), ofFolder);
        {
            const AsOrdinaryUser user;
            const InstanceLock first(folder.Folder());
            EXPECT_EQ(first.IsFirst(), canBeLocked);
            EXPECT_EQ(first.Problem().empty(), canBeLocked) << first.Problem();
            if (canBeLocked) {
                const InstanceLock second(folder.Folder());
                EXPECT_FALSE(second.IsFirst());
                EXPECT_EQ(second.Problem(), "");
            }
        }
        {
            const AsOrdinaryUser user;
            EXPECT_EQ(InstanceLock(folder.Folder()).IsFirst(), canBeLocked) << "the lock ends with its program";
        }
        std::filesystem::permissions(folder.Folder(), everything);
    }
}

}  // namespace
}  // namespace bellmark
