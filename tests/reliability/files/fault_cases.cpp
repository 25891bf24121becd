#include "tests/reliability/files/fault_cases.h"

#include <cerrno>

#define WIZARD "teluma-wizard "
#define RUN_DIRECTORY "/var/opt/teluma/run"
#define RUN RUN_DIRECTORY "/"
#define CONFIG RUN "teluma.cfg"
#define FILTERS RUN "smtp.filters"
#define SENDMAIL "/usr/sbin/sendmail"

namespace {

constexpr Outcome completes = Outcome::completes;
constexpr Outcome no_login = Outcome::no_login;
constexpr Outcome no_relay = Outcome::no_relay;
constexpr Outcome no_sendmail = Outcome::no_sendmail;

}  // namespace

const std::vector<FaultGroup>& fault_groups() {
    static const std::vector<FaultGroup> groups = {
        {"start_and_end",
         {
             {WIZARD "mkdtemp private directory", 1, EROFS, completes},
             {WIZARD "chdir private directory", 1, EACCES, completes},
             {WIZARD "unlink temp.cfg", -1, EIO, completes},
             {WIZARD "fchdir ", -1, EACCES, Outcome::completes_untidy},
             {WIZARD "rmdir private directory", 1, EBUSY, Outcome::completes_untidy},
         }},
        {"the_server",
         {
             {WIZARD "openat " RUN "teluma.pid", 1, EMFILE, Outcome::waits},
             {WIZARD "fdopen " RUN "teluma.pid", 1, ENOMEM, Outcome::waits},
             {WIZARD "read " RUN "teluma.pid", 1, EIO, Outcome::waits},
             {WIZARD "openat " RUN "teluma.pid", -1, EMFILE, completes},
             {WIZARD "read " RUN "teluma.pid", -1, EIO, completes},
             {WIZARD "close " RUN "teluma.pid", 1, EIO, completes},
             // Setting the password, starting the server, looking up its address.
             {WIZARD "fork ", 1, EAGAIN, no_login},
             {WIZARD "fchdir ", 1, EACCES, no_login},
             {WIZARD "execl /opt/teluma/bin/teluma -A \"Adm1n secret\" >> /dev/null", 1, EACCES,
              no_login},
             {WIZARD "fork ", 4, EAGAIN, no_login},
             {WIZARD "fchdir ", 2, EACCES, no_login},
             {WIZARD "execl /opt/teluma/bin/teluma >> /dev/null", 1, ENOMEM, no_login},
             {WIZARD "pipe ", -3, EMFILE, no_login},
             {WIZARD "fork ", 5, EAGAIN, no_login},
         }},
        {"the_ways_to_the_files",
         {
             {WIZARD "lstat " RUN_DIRECTORY, 1, EIO, completes},
             {WIZARD "openat " RUN_DIRECTORY, 1, EMFILE, Outcome::waits},
             {WIZARD "close " RUN_DIRECTORY, 1, EIO, completes},
             {WIZARD "lstat " RUN ".", 1, EIO, completes},
             {WIZARD "lstat " RUN "teluma.pid", 1, EIO, Outcome::waits},
             // To open the file, before the copy, behind it (and once more: is it still the same?).
             {WIZARD "lstat " CONFIG, 1, EIO, no_login},
             {WIZARD "lstat " CONFIG, 2, EIO, no_login},
             {WIZARD "lstat " CONFIG, 4, EIO, no_login},
             {WIZARD "lstat " FILTERS, 1, EIO, no_relay},
             {WIZARD "lstat " FILTERS, 2, EIO, no_relay},
             {WIZARD "lstat " FILTERS, 3, EIO, no_relay},
         }},
        {"the_configuration",
         {
             {WIZARD "openat " CONFIG, 1, EMFILE, no_login},
             {WIZARD "fdopen " CONFIG, 1, ENOMEM, no_login},
             {WIZARD "read " CONFIG, 1, EIO, no_login},
             {WIZARD "open temp.cfg", 1, ENOSPC, no_login},
             {WIZARD "fdopen temp.cfg", 1, ENOMEM, no_login},
             {WIZARD "write temp.cfg", 1, ENOSPC, no_login},
             {WIZARD "close temp.cfg", 1, EIO, no_login},
             {WIZARD "close " CONFIG, 1, EIO, completes},
         }},
        {"the_original_of_the_configuration",
         {
             {WIZARD "lstat " CONFIG ".beforewizard", 1, EIO, no_login},
             {WIZARD "unlinkat " CONFIG ".beforewizard.new", 1, EIO, completes},
             {WIZARD "openat " CONFIG ".beforewizard.new", 1, ENOSPC, no_login},
             {WIZARD "read " CONFIG, 2, EIO, no_login},
             {WIZARD "read " CONFIG, 3, EIO, no_login},
             {WIZARD "write " CONFIG ".beforewizard.new", 1, ENOSPC, no_login},
             {WIZARD "fchown " CONFIG ".beforewizard.new", 1, EPERM, no_login},
             {WIZARD "fchmod " CONFIG ".beforewizard.new", 1, EPERM, no_login},
             {WIZARD "fsync " CONFIG ".beforewizard.new", 1, EIO, no_login},
             {WIZARD "close " CONFIG ".beforewizard.new", 1, EDQUOT, no_login},
             {WIZARD "linkat " CONFIG ".beforewizard", 1, ENOSPC, no_login},
         }},
        // What the commands say is not looked at.
        {"the_copy_over_the_configuration",
         {
             {WIZARD "fork ", 2, EAGAIN, no_login},
             {WIZARD "execl cp temp.cfg " CONFIG " >> /dev/null", 1, ENOMEM, no_login},
             {"cp open " CONFIG, 1, EIO, completes},
             {"cp open temp.cfg", 1, EMFILE, no_login},
             {"cp openat " CONFIG, 1, ETXTBSY, no_login},
             {"cp copy_file_range " CONFIG, 1, EIO, no_login},
             {"cp read temp.cfg", 1, EIO, no_login},
             {"cp write " CONFIG, 1, ENOSPC, no_login},
             {"cp close " CONFIG, 1, EIO, completes},
             {"cp close temp.cfg", 1, EIO, completes},
             {WIZARD "fork ", 3, EAGAIN, completes},
             {WIZARD "execl rm temp.cfg >> /dev/null", 1, ENOMEM, completes},
             {"rm unlinkat temp.cfg", 1, EIO, completes},
             {WIZARD "unlink temp.cfg", 1, EIO, completes},
         }},
        {"the_filters_script",
         {
             {WIZARD "openat " FILTERS, 1, EACCES, no_relay},
             {WIZARD "fdopen " FILTERS, 1, ENOMEM, no_relay},
             {WIZARD "read " FILTERS, 1, EIO, no_relay},
             {WIZARD "open temp.cfg", 2, ENOSPC, no_relay},
             {WIZARD "fdopen temp.cfg", 2, ENOMEM, no_relay},
             {WIZARD "write temp.cfg", 2, ENOSPC, no_relay},
             {WIZARD "close temp.cfg", 2, EIO, no_relay},
             {WIZARD "close " FILTERS, 1, EIO, completes},
             {WIZARD "fork ", 6, EAGAIN, completes},
             {WIZARD "execl cp temp.cfg " FILTERS " >> /dev/null", 1, ENOMEM, completes},
             {"cp open " FILTERS, 1, EIO, completes},
             {"cp openat " FILTERS, 1, EACCES, completes},
             {"cp copy_file_range " FILTERS, 1, EIO, completes},
             {"cp write " FILTERS, 1, ENOSPC, completes},
             {"cp close " FILTERS, 1, EIO, completes},
             {WIZARD "fork ", 7, EAGAIN, completes},
             {WIZARD "fork ", 8, EAGAIN, no_relay},
             {WIZARD "fchown " FILTERS, 1, EPERM, no_relay},
         }},
        {"the_original_of_the_filters_script",
         {
             {WIZARD "lstat " FILTERS ".beforewizard", 1, EIO, no_relay},
             {WIZARD "unlinkat " FILTERS ".beforewizard.new", 1, EIO, completes},
             {WIZARD "openat " FILTERS ".beforewizard.new", 1, ENOSPC, no_relay},
             {WIZARD "read " FILTERS, 2, EIO, no_relay},
             {WIZARD "write " FILTERS ".beforewizard.new", 1, ENOSPC, no_relay},
             {WIZARD "fchown " FILTERS ".beforewizard.new", 1, EPERM, no_relay},
             {WIZARD "fchmod " FILTERS ".beforewizard.new", 1, EPERM, no_relay},
             {WIZARD "fsync " FILTERS ".beforewizard.new", 1, EIO, no_relay},
             {WIZARD "close " FILTERS ".beforewizard.new", 1, EDQUOT, no_relay},
             {WIZARD "linkat " FILTERS ".beforewizard", 1, ENOSPC, no_relay},
         }},
        {"sendmail",
         {
             {WIZARD "lstat /opt/teluma/bin/sendmail", 1, EIO, no_sendmail},
             {WIZARD "openat /opt/teluma/bin/sendmail", 1, EMFILE, no_sendmail},
             {WIZARD "close /opt/teluma/bin/sendmail", 1, EIO, completes},
             {WIZARD "fork ", 9, EAGAIN, no_sendmail},
             {WIZARD "fchown /opt/teluma/bin/sendmail", 1, EPERM, no_sendmail},
             {WIZARD "fchmod /opt/teluma/bin/sendmail", 1, EPERM, no_sendmail},
             {WIZARD "readlink " SENDMAIL, 1, EIO, completes},
             {WIZARD "lstat " SENDMAIL, 1, EIO, completes},
             {WIZARD "lstat " SENDMAIL ".beforeteluma", 1, EIO, completes},
             {WIZARD "lstat " SENDMAIL ".beforeteluma1", 1, EIO, completes},
             {WIZARD "rename " SENDMAIL, 1, EROFS, no_sendmail},
             {WIZARD "symlink " SENDMAIL, 1, ENOSPC, no_sendmail},
         }},
    };
    return groups;
}
