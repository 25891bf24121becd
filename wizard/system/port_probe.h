#pragma once

/// Checks whether some program accepts TCP connections on `port` (its low 16 bits) of `address`, a
/// dotted IPv4 address or a host name. Returns 0 when a connection succeeded, so the port is taken;
/// the connection is left open. Otherwise returns the errno of what failed, non-zero in general,
/// and the port counts as free. Once the apply sequence has begun, a port that was found free
/// before is reported free without another attempt. Waits as long as the connection attempt does,
/// letting signals in.
int probe_port(const char* address, int port);

/// True when `text` is not empty and holds nothing but the digits 0 to 9.
bool is_all_digits(const char* text);
