#pragma once

#include <exception>
#include <string>

/// What the exception says that `piece` throws; "nothing" if it throws none.
template <class Piece>
std::string thrown_by(Piece piece) {
    try {
        piece();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "nothing";
}
