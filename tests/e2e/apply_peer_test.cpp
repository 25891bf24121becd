// Who is at the other end of the connection: nobody but root's or the server's own user is sent
// anything.

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/e2e/apply_test.h"
#include "tests/e2e/fake_server.h"
#include "tests/support/files.h"

namespace {

// Without any rights.
constexpr uid_t other_user = 12;

class ApplyPeer : public ApplyTest {
  protected:
    void SetUp() override {
        if (chown("/run/scratch", other_user, other_user) != 0)
            GTEST_SKIP() << "a user namespace without other ids";
    }
};

class ApplyOtherUser : public ApplyPeer, public testing::WithParamInterface<int> {
  protected:
    void expectNothingSent() {
        wizard.dismissError(login_message);
        EXPECT_EQ(wizard.waitExit(), exited(1));
        EXPECT_EQ(FakeServer::heard(), "");
    }
};

std::string listener_name(const testing::TestParamInfo<int>& info) {
    return info.param == AF_INET ? "127_0_0_1" : "the_ipv6_wildcard";
}

INSTANTIATE_TEST_SUITE_P(At, ApplyOtherUser, testing::Values(AF_INET, AF_INET6), listener_name);

// The server runs without a command-line interface until the wizard switches that on.
TEST_P(ApplyOtherUser, who_has_the_port_before_the_start_is_sent_nothing) {
    server.start();
    const FakeServer other(other_user, GetParam());
    FakeServer::waitUntilListening();
    wizard.walkToTheEnd(answers);
    expectNothingSent();
}

TEST_P(ApplyOtherUser, who_takes_the_port_between_stop_and_start_is_sent_nothing) {
    server.wrapBy(
        "[ $# = 0 ] || until [ -e /run/scratch/taken ]; do sleep 0.01; done\n"
        "exec $0.real \"$@\"\n");
    std::string config = read_file(InstalledServer::config);
    const std::string end_of_services = "webadmin )";
    config.replace(config.find(end_of_services), end_of_services.size(), "webadmin cli )");
    write_file(InstalledServer::config, config);
    server.start();
    const FakeServer other(other_user, GetParam());
    wizard.walkToTheEnd(answers);
    FakeServer::waitUntilListening();
    write_file("/run/scratch/taken", "");
    expectNothingSent();
}

TEST_F(ApplyPeer, that_is_the_servers_own_user_is_spoken_to) {
    server.runAsItsUser();
    runThrough();
    EXPECT_EQ(server.commands(), wire());
}

}  // namespace
