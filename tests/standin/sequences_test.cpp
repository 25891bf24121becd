// The sequences of commands by which the wizard configures a server.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "standin/state_file.h"
#include "standin/text.h"
#include "tests/standin/logged_in_session.h"

namespace standin {
namespace {

using Lines = std::vector<std::string>;

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Lines create_domain(const std::string& name) {
    return {"create domain name " + name + " domainlocation /d/ postmasterpasswd secret",
            "commit",
            "config server",
            "set primarydomain " + name,
            "commit",
            "save config"};
}

/// Replaces the listeners `old_ones` of a service.
Lines set_listener(const std::string& service, const Lines& old_ones, const std::string& address,
                   bool with_certificate) {
    Lines lines = {"config server", "config " + service, "list listeners"};
    for (const std::string& old : old_ones) {
        lines.push_back("remove listener address " + old);
    }
    lines = lines + Lines{"commit", "config " + service, "add listener address " + address,
                          "set enable yes"};
    if (with_certificate) {
        lines = lines +
                Lines{"config sslcontrol", "set certfile /var/opt/teluma/teluma_cert.pem", "done"};
    }
    return lines + Lines{"commit", "commit", "save config", "back"};
}

Lines set_services(const std::string& names) {
    return {"config server", "show attr services", "set services ( " + names + " )",
            "commit",        "config server",      "save config",
            "commit"};
}

Lines ask_for_filters() {
    return {"config server", "show attr smtpfiltersfile", "back"};
}

Lines add_aliases(bool root, bool localhost, bool localdomain) {
    const Lines add_localhost = {"add alias localhost", "commit"};
    const Lines add_localdomain = {"add alias localhost.localdomain", "commit"};
    const Lines update = {"update domain name example.com"};
    Lines lines = update;
    if (root) {
        lines = lines + Lines{"update account name postmaster", "add alias root", "commit"};
    }
    if (localdomain && localhost) {
        return lines + add_localdomain + update + add_localhost;
    }
    if (localdomain) {
        return lines + add_localdomain;
    }
    return lines + (localhost ? add_localhost : Lines{"commit"});
}

const Lines webadmin_listeners = {"127.0.0.1:9000", "127.0.0.2:9000"};

class Sequences : public testing::Test {
  protected:
    LoggedInSession server;

    /// The sequence succeeds and ends where it began, in the outermost context.
    void succeeds(const Lines& lines) {
        EXPECT_EQ(server.refused(lines), "");
        EXPECT_EQ(server.session.prompt(), "teluma> ");
    }
};

TEST_F(Sequences, CreatingADomainMakesItThePrimaryOne) {
    succeeds(create_domain("example.org"));
    EXPECT_EQ(server.store.live.primary_domain, "example.org");
    EXPECT_EQ(server.store.live.domains.count("example.org"), 1U);
}

TEST_F(Sequences, ReplacingTheWebAdminListeners) {
    succeeds(set_listener("webadmin", webadmin_listeners, "192.0.2.1:9000", false));
    const Service& webadmin = server.store.live.listener_services["webadmin"];
    EXPECT_EQ(webadmin.listeners, Lines{"192.0.2.1:9000"});
    EXPECT_TRUE(webadmin.enabled);
}

TEST_F(Sequences, TheWebAdminListenersAgainAfterAFailureInAnyOfTheirContexts) {
    const Lines all = set_listener("webadmin", webadmin_listeners, "192.0.2.1:9000", false);
    for (std::size_t failing = 0; failing <= all.size(); ++failing) {
        LoggedInSession fresh;
        const Lines begun(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(failing));
        ASSERT_EQ(fresh.refused(begun), "");
        const Lines listed = fresh.store.live.listener_services["webadmin"].listeners;
        EXPECT_EQ(fresh.refused(Lines{"back", "back"} +
                                set_listener("webadmin", listed, "192.0.2.1:9001", false)),
                  "")
            << "after " << failing << " commands";
    }
}

TEST_F(Sequences, ReplacingTheListenersOfAServiceWithACertificate) {
    for (const char* service : {"smtp-incoming", "pop3", "imap"}) {
        const Lines old_ones = server.store.live.listener_services[service].listeners;
        const std::string address = "192.0.2.1:" + std::to_string(100 + service[0]);
        succeeds(set_listener(service, old_ones, address, true));
        const Service& changed = server.store.live.listener_services[service];
        EXPECT_EQ(changed.listeners, Lines{address});
        EXPECT_EQ(changed.certfile, "/var/opt/teluma/teluma_cert.pem");
    }
}

TEST_F(Sequences, ReplacingTheListenersOfAServiceWithoutACertificate) {
    succeeds(set_listener("webmail", {}, "192.0.2.1:80", false));
    EXPECT_EQ(server.store.live.listener_services["webmail"].listeners, Lines{"192.0.2.1:80"});
}

TEST_F(Sequences, SettingTheServices) {
    const std::string names = "smtpIncoming smtpOutgoing processing webadmin cli";
    for (const char* chosen : {"", " pop3", " imap", " webmail", " pop3 imap", " pop3 webmail",
                               " imap webmail", " pop3 imap webmail"}) {
        succeeds(set_services(names + chosen));
        EXPECT_EQ(joined(server.store.live.services), names + chosen);
        succeeds(set_services("log " + names + chosen));
        EXPECT_EQ(joined(server.store.live.services), "log " + names + chosen);
    }
}

TEST_F(Sequences, AskingForTheFiltersScript) {
    succeeds(ask_for_filters());
}

class Aliases : public Sequences, public testing::WithParamInterface<int> {};

TEST_P(Aliases, EachCombinationIsAdded) {
    const bool root = (GetParam() & 1) != 0;
    const bool localhost = (GetParam() & 2) != 0;
    const bool localdomain = (GetParam() & 4) != 0;
    succeeds(add_aliases(root, localhost, localdomain));
    Domain& domain = server.store.live.domains["example.com"];
    EXPECT_EQ(domain.accounts["postmaster"], root ? Lines{"root"} : Lines{});
    EXPECT_EQ(domain.aliases, (localdomain ? Lines{"localhost.localdomain"} : Lines{}) +
                                  (localhost ? Lines{"localhost"} : Lines{}));
}

INSTANTIATE_TEST_SUITE_P(RootLocalhostLocaldomain, Aliases, testing::Range(1, 8));

TEST_F(Sequences, AllOfThemInAnyOrderEndAtTheOutermostContext) {
    std::vector<Lines> all = {
        create_domain("example.org"),
        add_aliases(true, true, true),
        set_listener("webadmin", webadmin_listeners, "192.0.2.1:9000", false),
        set_listener("smtp-incoming", {"127.0.0.1:25"}, "192.0.2.1:25", true),
        set_listener("pop3", {}, "192.0.2.1:110", true),
        set_listener("webmail", {}, "192.0.2.1:80", false),
        set_services("smtpIncoming webadmin cli pop3 webmail"),
        ask_for_filters(),
    };
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        LoggedInSession fresh;
        for (const Lines& sequence : all) {
            ASSERT_EQ(fresh.refused(sequence), "") << "round " << round;
            ASSERT_EQ(fresh.session.prompt(), "teluma> ");
        }
        std::shuffle(all.begin(), all.end(), random);
    }
}

TEST_F(Sequences, AreKeptBySavingThem) {
    succeeds(create_domain("example.org"));
    succeeds(add_aliases(true, true, true));
    succeeds(set_listener("pop3", {}, "192.0.2.1:110", true));
    Store restarted(run_paths(server.directory.path()));
    EXPECT_EQ(restarted.load(empty_state()), "");
    EXPECT_EQ(state_to_text(restarted.live), state_to_text(server.store.live));
}

}  // namespace
}  // namespace standin
