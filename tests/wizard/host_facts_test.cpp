#include "wizard/base/host_facts.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <string>

#include "tests/wizard/fake_interfaces.h"
#include "tests/wizard/replaced_calls.h"
#include "wizard/base/install_profile.h"

namespace {

class HostFacts : public testing::Test {
  protected:
    ~HostFacts() override {
        replaced_calls = {};
        release_networks();
        os_kind = os_linux;
    }
};

TEST_F(HostFacts, are_null_and_0_before_start_up) {
    EXPECT_EQ(interface_table, nullptr);
    EXPECT_EQ(interface_count, 0);
    EXPECT_EQ(relay_network_list, nullptr);
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(HostFacts, hold_the_interfaces_and_their_networks) {
    fake_interfaces({{"lo", "127.0.0.1", "255.0.0.0"}, {"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_networks();
    ASSERT_EQ(interface_count, 3);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[2].address, "192.168.7.2");
    ASSERT_EQ(relay_network_count, 2);
    EXPECT_STREQ(relay_network_list[1].network, "192.168.7.0");
    EXPECT_STREQ(relay_network_list[1].netmask, "255.255.255.0");
}

TEST_F(HostFacts, hold_the_entry_for_all_interfaces_where_the_interfaces_cannot_be_had) {
    fake_failing_interface_list();
    discover_networks();
    ASSERT_EQ(interface_count, 1);
    EXPECT_STREQ(interface_table[0].name, "all");
    EXPECT_STREQ(interface_table[0].address, "0.0.0.0");
    EXPECT_STREQ(interface_table[1].name, "");
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(HostFacts, keep_of_the_table_what_is_used_and_the_empty_entry_that_ends_it) {
    fake_interfaces({{"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_networks();
    ASSERT_EQ(interface_count, 2);
    EXPECT_STREQ(interface_table[2].name, "");
    EXPECT_LT(malloc_usable_size(interface_table), 4 * sizeof(interf_addr));
}

TEST_F(HostFacts, keep_a_full_table_whole) {
    fake_interfaces(many_interfaces(interface_table_size - 1));
    discover_networks();
    ASSERT_EQ(interface_count, interface_table_size);
    EXPECT_STREQ(interface_table[interface_table_size - 1].address, "10.28.0.1");
}

TEST_F(HostFacts, are_null_and_0_after_a_release_and_after_a_second_one) {
    fake_interfaces({{"eth0", "192.168.7.2", "255.255.255.0"}});
    discover_networks();
    release_networks();
    release_networks();
    EXPECT_EQ(interface_table, nullptr);
    EXPECT_EQ(interface_count, 0);
    EXPECT_EQ(relay_network_list, nullptr);
    EXPECT_EQ(relay_network_count, 0);
}

TEST_F(HostFacts, both_documents_stand_in_the_directory_of_the_selected_profile) {
    select_install_profile();
    os_kind = os_netbsd;
    form_document_paths();
    EXPECT_STREQ(readme_path, "/usr/pkg/teluma/share/doc/README");
    EXPECT_STREQ(others_doc_path, "/usr/pkg/teluma/share/doc/REMOVE-OTHERS.txt");
}

TEST_F(HostFacts, the_profiles_own_field_names_the_document_from_then_on) {
    select_install_profile();
    form_document_paths();
    EXPECT_EQ(others_doc_path, install_profiles[os_linux].doc_dir);
    EXPECT_STREQ(install_profiles[os_linux].doc_dir, "/opt/teluma/share/doc/REMOVE-OTHERS.txt");
    EXPECT_STREQ(readme_path, "/opt/teluma/share/doc/README");
}

TEST_F(HostFacts, the_other_profiles_keep_their_documentation_directories) {
    select_install_profile();
    form_document_paths();
    EXPECT_STREQ(install_profiles[os_sunos].doc_dir, "/opt/teluma/share/doc/");
    EXPECT_STREQ(install_profiles[os_freebsd].doc_dir, "/usr/local/teluma/share/doc/");
}

}  // namespace
