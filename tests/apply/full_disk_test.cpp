// No room for the working copy: the file must never come out shorter than it was.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <string>

#include "apply/original_copy.h"
#include "apply/server_config.h"
#include "apply/working_copy.h"
#include "tests/apply/installed_server_case.h"
#include "tests/apply/small_directory.h"
#include "tests/support/descriptor.h"
#include "tests/support/files.h"

namespace {

class FullDisk : public InstalledServerCase {
  protected:
    FullDisk() { go_to_small_directory(); }
};

TEST_F(FullDisk, a_working_copy_that_could_not_be_written_whole_is_not_installed) {
    write_file("/run/scratch/file", "old\n");
    std::FILE* original = std::fopen("/run/scratch/file", "r");
    std::FILE* copy = working_copy_open();
    ASSERT_NE(copy, nullptr);
    std::fputs(std::string(5000, 'x').c_str(), copy);
    EXPECT_EQ(working_copy_install(copy, original, "/run/scratch/file"), 1);
    std::fclose(original);
    EXPECT_EQ(read_file("/run/scratch/file"), "old\n");
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(FullDisk, the_configuration_stays_as_it_was) {
    std::string config = read_file(InstalledServer::config);
    while (config.size() < 5000)
        config += "# padding\n";
    write_file(InstalledServer::config, config);
    EXPECT_EQ(config_prepare(InstalledServer::config), 1);
    EXPECT_EQ(read_file(InstalledServer::config), config);
    EXPECT_FALSE(exists("temp.cfg"));
}

TEST_F(FullDisk, a_configuration_that_fits_is_prepared) {
    const std::string before = read_file(InstalledServer::config);
    EXPECT_EQ(config_prepare(InstalledServer::config), 0);
    EXPECT_EQ(read_file(InstalledServer::config).size(), before.size() + 5);
}

TEST_F(FullDisk, a_file_whose_original_finds_no_room_beside_it_is_not_touched) {
    const std::string content(3000, 'x');
    write_file("file", content);
    EXPECT_EQ(keep_original(Descriptor(open("file", O_RDONLY)).get(), "file"), 1);
    EXPECT_EQ(read_file("file"), content);
    EXPECT_FALSE(exists("file.beforewizard"));
    EXPECT_FALSE(exists("file.beforewizard.new"));
}

}  // namespace
