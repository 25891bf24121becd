#pragma once

#include <string>

/// What the host says its NIS domain is: this program has a getdomainname(2) of its own.
extern std::string host_domain;
