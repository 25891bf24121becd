#pragma once

/// 50 characters that tell where they have been cut.
constexpr char fifty_characters[] = "0123456789abcdefghijABCDEFGHIJ9876543210jihgfedcba";
static_assert(sizeof fifty_characters == 50 + 1);
