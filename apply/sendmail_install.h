#pragma once

/// Puts the server's sendmail wrapper in the place of the system's /usr/sbin/sendmail, by a
/// symbolic link, after giving it to the server's account and making it set-user-ID and
/// set-group-ID. What stood there is kept under the first free one of the names
/// /usr/sbin/sendmail.beforeteluma, .beforeteluma1 ... .beforeteluma99, the last of which is
/// overwritten when none is free; a link of which such a copy exists before that is only removed.
/// Does nothing when `yes` is 0. Returns 0; 1 when the wrapper's mode could not be set; -1 for any
/// other failure, which takes no step before it back. All but that of a rename are told in the
/// system log (syslog(3), identity WIZARD).
int sendmail_install(int yes);
