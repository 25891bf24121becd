#include "wizard/base/host_facts.h"

#include <gtest/gtest.h>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/install_profile.h"

namespace {

class Discovery : public testing::Test {
  protected:
    ~Discovery() override {
        replaced_calls = {};
        release_networks();
        host_facts = {};
    }
};

TEST_F(Discovery, finds_the_interfaces_and_their_networks) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"}, {"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_networks();
    ASSERT_EQ(interface_count, 3);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[2].address, "192.168.7.2");
    ASSERT_EQ(relay_network_count, 2);
    EXPECT_STREQ(relay_network_list[1].network, "192.168.7.0");
    EXPECT_STREQ(relay_network_list[1].netmask, "255.255.255.0");
}

TEST_F(Discovery, has_the_entry_for_all_interfaces_where_the_interfaces_cannot_be_had) {
    fake_failing_interface_list();
    discover_networks();
    ASSERT_EQ(interface_count, 1);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[0].address, "0.0.0.0");
    EXPECT_STREQ(interface_table[1].name, "");
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(Discovery, is_forgotten_by_a_release_and_by_a_second_one) {
    fake_interfaces({{"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_networks();
    for (int i = 0; i < 2; ++i) {
        release_networks();
        EXPECT_EQ(interface_table, nullptr);
        EXPECT_EQ(interface_count, 0);
        EXPECT_EQ(relay_network_list, nullptr);
        EXPECT_EQ(relay_network_count, 0);
    }
}

TEST_F(Discovery, finds_both_documents_in_the_directory_of_the_selected_profile) {
    select_install_profile();
    os_kind = os_netbsd;
    form_document_paths();
    EXPECT_STREQ(readme_path, "/usr/pkg/teluma/share/doc/README");
    EXPECT_STREQ(others_doc_path, "/usr/pkg/teluma/share/doc/REMOVE-OTHERS.txt");
    EXPECT_EQ(others_doc_path, install_profiles[os_netbsd].doc_dir) << "the row's own field";
    EXPECT_STREQ(install_profiles[os_linux].doc_dir, "/opt/teluma/share/doc/");
}

}  // namespace
