#pragma once

#include <unistd.h>

#include <utility>

namespace standin {

/// Owns one file descriptor and closes it at the end of its life; -1 stands for none.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number(number) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    /// The descriptor for system calls; still owned by this object.
    int get() const { return number; }
    bool isOpen() const { return number >= 0; }

    /// Closes it now. Returns false when the system reported an error (of a delayed write).
    bool close() {
        const int closing = std::exchange(number, -1);
        return closing < 0 || ::close(closing) == 0;
    }

  private:
    int number = -1;
};

}  // namespace standin
