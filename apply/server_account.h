#pragma once

/// Gives an open file to the user and group of the server's account, "teluma". Returns 0, or 1 when
/// there is no such account or the owner could not be changed.
int give_to_server(int file);
