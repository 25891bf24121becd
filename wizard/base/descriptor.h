#pragma once

#include <unistd.h>

#include <utility>

/// Owns an open file descriptor and closes it at the end of its life. Can be moved, not copied.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : value(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : value(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value, other.value);
        return *this;
    }
    ~Descriptor() { close(); }

    /// For system calls; still owned by this object. -1 when nothing is open.
    int get() const { return value; }
    bool isOpen() const { return value >= 0; }

    /// Closes it now. Returns false when the system reports an error, as of a delayed write.
    bool close() {
        const int closing = release();
        return closing < 0 || ::close(closing) == 0;
    }

    /// Gives the open descriptor away; the caller closes it.
    int release() { return std::exchange(value, -1); }

  private:
    int value = -1;
};
