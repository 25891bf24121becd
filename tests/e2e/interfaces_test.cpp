// What the listeners' screens and the relay screen make of the interfaces of a host. Each suite has
// a host of its own; the build file lists their interfaces.

#include <gtest/gtest.h>

#include "tests/e2e/frame.h"
#include "tests/e2e/wizard_run.h"
#include "tests/support/expect_screen.h"
#include "tests/support/process.h"

namespace {

class Host : public testing::Test {
  protected:
    ScreenImage webadminFrame() {
        wizard().walk(Stop::password, Stop::webadmin);
        return frame_on(wizard().image()).image;
    }

    // The list of the relay screen, three lines below its title.
    ScreenImage relayList(int rows) {
        wizard().walk(Stop::password, Stop::relay);
        const ScreenImage frame = frame_on(wizard().image()).image;
        return frame.region(5, 1, rows, 30);
    }

    // Started at the first use, so that a test can prepare the host before.
    WizardRun& wizard() {
        if (!run)
            run.emplace();
        return *run;
    }

  private:
    std::optional<WizardRun> run;
};

class LoopbackOnlyHost : public Host {};

TEST_F(LoopbackOnlyHost, offers_all_interfaces_and_the_loopback) {
    EXPECT_PICTURE(webadminFrame(), R"(
┌──────────────────────────┐
│Select WebAdmin Interface │
├──────────────────────────┤
│Interface:         Port:  │
│$ all : 0.0.0.0    9000   │
│  lo  : 127.0.0.1  9000   │
│                          │
│                          │
│  Back               OK   │
│                          │
└──────────────────────────┘
)");
}

TEST_F(LoopbackOnlyHost, offers_the_loopback_network_for_relaying) {
    EXPECT_PICTURE(relayList(2), R"(
[x] 127.0.0.0/255.0.0.0

)");
}

class HostWithoutInterfaces : public Host {
  protected:
    HostWithoutInterfaces() {
        run_command({"/bin/sh", "-c", "PATH=$PATH:/usr/sbin:/sbin ip address flush dev lo"});
    }
};

TEST_F(HostWithoutInterfaces, offers_all_interfaces_alone_in_the_narrowest_window) {
    EXPECT_PICTURE(webadminFrame(), R"(
┌─────────────────────────┐
│Select WebAdmin Interface│
├─────────────────────────┤
│Interface:       Port:   │
│$ all : 0.0.0.0  9000    │
│                         │
│                         │
│  Back              OK   │
│                         │
└─────────────────────────┘
)");
}

TEST_F(HostWithoutInterfaces, has_no_network_to_relay_for_and_goes_on) {
    EXPECT_PICTURE(relayList(1), "\n\n");
    wizard().press(Key::down);
    wizard().press(Key::up);
    wizard().pressNext(Stop::relay);
    wizard().waitForScreen(Stop::sendmail);
}

class HostWithOneInterfaceDown : public Host {};

TEST_F(HostWithOneInterfaceDown, does_not_offer_it_to_listen_at) {
    EXPECT_PICTURE(webadminFrame(), R"(
┌─────────────────────────────┐
│  Select WebAdmin Interface  │
├─────────────────────────────┤
│Interface:            Port:  │
│$ all  : 0.0.0.0      9000   │
│  lo   : 127.0.0.1    9000   │
│  eth0 : 192.168.7.2  9000   │
│                             │
│                             │
│  Back                  OK   │
│                             │
└─────────────────────────────┘
)");
}

TEST_F(HostWithOneInterfaceDown, does_not_offer_its_network_for_relaying) {
    EXPECT_PICTURE(relayList(3), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.7.0/255.255.255.0

)");
}

class HostTwiceInOneNetwork : public Host {};

TEST_F(HostTwiceInOneNetwork, offers_both_interfaces_to_listen_at) {
    EXPECT_PICTURE(webadminFrame(), R"(
┌────────────────────────────────┐
│   Select WebAdmin Interface    │
├────────────────────────────────┤
│Interface:               Port:  │
│$ all   : 0.0.0.0        9000   │
│  lo    : 127.0.0.1      9000   │
│  left  : 192.168.1.20   9000   │
│  right : 192.168.1.130  9000   │
│                                │
│                                │
│  Back                     OK   │
│                                │
└────────────────────────────────┘
)");
}

TEST_F(HostTwiceInOneNetwork, offers_the_network_once_for_relaying) {
    EXPECT_PICTURE(relayList(3), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.1.0/255.255.255.0

)");
}

class HostWithNarrowNetworkFirst : public Host {};

TEST_F(HostWithNarrowNetworkFirst, offers_only_the_wider_network_that_comes_later) {
    EXPECT_PICTURE(relayList(3), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.0.0/255.255.0.0

)");
}

class HostWithWideNetworkFirst : public Host {};

TEST_F(HostWithWideNetworkFirst, offers_the_narrower_network_that_comes_later_too) {
    EXPECT_PICTURE(relayList(4), R"(
[x] 127.0.0.0/255.0.0.0
[x] 192.168.0.0/255.255.0.0
[x] 192.168.1.0/255.255.255.0

)");
}

}  // namespace
