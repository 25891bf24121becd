// What the server's user, who may own the directories of the server's files, puts in their place.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include "apply/relay_filter.h"
#include "apply/sendmail_install.h"
#include "apply/server_config.h"
#include "apply/server_session.h"
#include "tests/apply/apply_rig.h"
#include "tests/support/case_name.h"
#include "tests/support/files.h"
#include "tests/support/server_account.h"

namespace {

using std::filesystem::path;

constexpr const char* content = "root:secret\nservices = ( a )\n";

int prepare_config() { return config_prepare(InstalledServer::config); }

int write_filter() {
    const int first = 0;
    return relay_write_filter(&first, 1);
}

int install_sendmail() { return sendmail_install(1); }

// A change of names that comes just before something of this name is opened.
struct Exchange {
    std::string name;
    std::function<void()> change;
} exchange;

// A file of the server's, and what rewrites it or gives it away.
struct ServersFile {
    const char* name;
    const char* path;
    int (*step)();
    int failure;  // what the step returns
};

constexpr ServersFile configuration = {"configuration", InstalledServer::config, prepare_config, 1};

class Planted : public InstalledServerCase, public testing::WithParamInterface<ServersFile> {
  protected:
    // The file's directory belongs to the server's user, who can't write beside the victim.
    void SetUp() override {
        if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
        logIn();
        std::filesystem::create_directory(victim.parent_path());
        write_file(victim, content, 0600);
        own(directory);
        own(directory.parent_path());
    }

    static void own(const path& owned) { chown(owned.c_str(), server_user(), server_user()); }

    // By the server's user.
    template <class Piece>
    static void plant(Piece piece) {
        EXPECT_EQ(as_user(server_user(),
                          [&] {
                              if (!piece()) _exit(1);
                          }),
                  exited(0));
    }

    void plantLink() const {
        plant([&] {
            return unlink(file.c_str()) == 0 && symlink(victim.c_str(), file.c_str()) == 0;
        });
    }

    void plantLinkToDirectory() const {
        plant([&] {
            return rename(directory.c_str(), (directory.string() + ".old").c_str()) == 0 &&
                   symlink(victim.parent_path().c_str(), directory.c_str()) == 0;
        });
    }

    // By the superuser, in a directory of this owner and mode.
    void putLink(uid_t owner, mode_t mode) const {
        chown(directory.c_str(), owner, server_user());
        chmod(directory.c_str(), mode);
        unlink(file.c_str());
        ASSERT_EQ(symlink(("../../private" / file.filename()).c_str(), file.c_str()), 0);
    }

    // As the server's user can't where fs.protected_hardlinks is set.
    void putSecondName(uid_t owner) const {
        chown(directory.c_str(), owner, owner);
        unlink(file.c_str());
        ASSERT_EQ(link(victim.c_str(), file.c_str()), 0);
    }

    void expectRefused() const {
        EXPECT_EQ(GetParam().step(), GetParam().failure);
        expectVictimUntouched();
        EXPECT_FALSE(exists("temp.cfg"));
    }

    void expectVictimUntouched() const {
        EXPECT_EQ(read_file(victim), content);
        EXPECT_EQ(file_facts(victim).owner, 0u);
        EXPECT_EQ(file_facts(victim).mode, 0600u);
    }

    void expectDone() const {
        EXPECT_EQ(GetParam().step(), 0);
        EXPECT_TRUE(read_file(victim) != content || file_facts(victim).owner == server_user());
    }

    const path file = GetParam().path;
    const path directory = file.parent_path();
    // On the same file system, of the same name.
    const path victim = directory.parent_path().parent_path() / "private" / file.filename();
};

TEST_P(Planted, link_to_a_file_of_roots_is_not_followed) {
    plantLink();
    expectRefused();
}

TEST_P(Planted, link_in_the_place_of_the_directory_is_not_followed) {
    plantLinkToDirectory();
    expectRefused();
}

TEST_P(Planted, link_that_comes_between_the_look_and_the_open_is_not_followed) {
    exchange = {file.filename(), [this] { plantLink(); }};
    expectRefused();
}

TEST_P(Planted, link_to_a_directory_that_comes_between_the_look_and_the_open_is_not_followed) {
    exchange = {directory.filename(), [this] { plantLinkToDirectory(); }};
    expectRefused();
}

TEST_P(Planted, link_of_roots_where_others_can_write_is_not_followed) {
    putLink(server_user(), 0755);
    expectRefused();
    putLink(0, 0775);
    expectRefused();
}

TEST_P(Planted, link_of_the_servers_user_in_a_directory_of_roots_is_not_followed) {
    putLink(0, 0755);
    ASSERT_EQ(lchown(file.c_str(), server_user(), server_user()), 0);
    expectRefused();
}

TEST_P(Planted, link_of_roots_in_a_directory_of_roots_is_followed) {
    putLink(0, 0755);
    expectDone();
}

TEST_P(Planted, second_name_of_a_file_is_taken_in_a_directory_of_roots_only) {
    putSecondName(server_user());
    expectRefused();
    putSecondName(0);
    expectDone();
}

TEST_P(Planted, file_of_the_servers_user_in_its_own_directory_is_taken) {
    own(file);
    EXPECT_EQ(GetParam().step(), 0);
    EXPECT_EQ(file_facts(file).owner, server_user());
}

INSTANTIATE_TEST_SUITE_P(
    InPlaceOf, Planted,
    testing::Values(configuration,
                    ServersFile{"filters_script", InstalledServer::filters, write_filter, 1},
                    ServersFile{"wrapper", "/opt/teluma/bin/sendmail", install_sendmail, -1}),
    CaseName());

// The file is exchanged when the command that copies over it has been started.
class Swapped : public Planted {
  protected:
    void SetUp() override {
        // See landlock(7).
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) < 1)
            GTEST_SKIP() << "a kernel that can't keep a command from other files";
        Planted::SetUp();
    }

    // The command changes names as the server's user would at this moment, and then copies.
    static void swapBefore(const std::string& swap, const std::string& swap_back = "") {
        std::filesystem::create_directory("bin");
        write_file("bin/cp", "#!/bin/sh\n" + swap + "\n/bin/cp \"$@\"\n" + swap_back, 0755);
        const std::string found_first = std::filesystem::current_path() / "bin:";
        setenv("PATH", (found_first + getenv("PATH")).c_str(), 1);
    }
};

TEST_P(Swapped, for_a_link_to_a_file_of_roots_the_step_fails) {
    swapBefore("ln -sf " + victim.string() + " " + file.string());
    expectRefused();
}

TEST_P(Swapped, for_a_link_to_a_directory_of_roots_nothing_is_made_in_it) {
    swapBefore("ln -sf " + victim.parent_path().string() + " " + file.string());
    expectRefused();
    EXPECT_FALSE(exists(victim.parent_path() / "temp.cfg"));
}

TEST_P(Swapped, and_back_again_nothing_else_is_written_to) {
    const std::string away = "mv " + file.string() + " " + file.string() + ".away";
    swapBefore(away + " && ln -s " + victim.string() + " " + file.string(),
               "mv " + file.string() + ".away " + file.string());
    EXPECT_EQ(GetParam().step(), 0);
    expectVictimUntouched();
}

TEST_P(Swapped, for_a_pipe_the_command_waits_for_nobody) {
    swapBefore("rm " + file.string() + " && mkfifo " + file.string());
    EXPECT_EQ(GetParam().step(), GetParam().failure);
}

INSTANTIATE_TEST_SUITE_P(BeforeTheCopy, Swapped,
                         testing::Values(configuration,
                                         ServersFile{"filters_script", InstalledServer::filters,
                                                     write_filter, 1}),
                         CaseName());

// What a server that runs as its own user may name as its filters script.
class ScriptOfServersUser : public InstalledServerCase {
  protected:
    void SetUp() override {
        if (server_user() == 0) GTEST_SKIP() << "a user namespace without other ids";
    }

    // What the step returns when the server names this file, which holds `content`.
    int nameScript(const std::string& path, uid_t owner) {
        write_file(path, content);
        std::string config = read_file(InstalledServer::config);
        config.replace(config.find(InstalledServer::filters),
                       std::string(InstalledServer::filters).size(), path);
        write_file(InstalledServer::config, config);
        server.runAsItsUser();
        chown(path.c_str(), owner, owner);
        logIn();
        EXPECT_FALSE(server_session.peer_is_root);
        return write_filter();
    }

    void expectRefused(const std::string& path) {
        EXPECT_EQ(nameScript(path, 0), 1);
        EXPECT_EQ(read_file(path), content);
        EXPECT_EQ(file_facts(path).owner, 0u);
        EXPECT_FALSE(exists(path + ".beforewizard"));
    }

    void expectWritten(const std::string& path, uid_t owner) {
        EXPECT_EQ(nameScript(path, owner), 0);
        EXPECT_NE(read_file(path), content);
        EXPECT_EQ(file_facts(path).owner, server_user());
    }
};

TEST_F(ScriptOfServersUser, that_is_a_file_of_roots_is_refused) {
    expectRefused("/etc/shadow.copy");
}

TEST_F(ScriptOfServersUser, that_is_the_servers_program_is_refused) {
    expectRefused("/opt/teluma/bin/helper");
}

TEST_F(ScriptOfServersUser, that_is_a_file_of_another_user_is_refused) {
    EXPECT_EQ(nameScript("/run/scratch/script", 12), 1);
    EXPECT_EQ(file_facts("/run/scratch/script").owner, 12u);
}

TEST_F(ScriptOfServersUser, that_is_its_own_file_is_written_wherever_it_stands) {
    expectWritten("/run/scratch/script", server_user());
}

TEST_F(ScriptOfServersUser, that_is_roots_beside_the_configuration_is_written) {
    expectWritten("/var/opt/teluma/run/script", 0);
}

TEST_F(ScriptOfServersUser, that_is_roots_among_the_domains_is_written) {
    expectWritten("/var/opt/teluma/domains/script", 0);
}

}  // namespace

// In the place of the C library's.
extern "C" int openat(int directory, const char* name, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (exchange.change && exchange.name == name) std::exchange(exchange.change, nullptr)();
    return static_cast<int>(syscall(SYS_openat, directory, name, flags, mode));
}
