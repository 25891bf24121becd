#pragma once

/// Owns an open file descriptor and closes it.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : value(descriptor) {}
    ~Descriptor();
    Descriptor(Descriptor&& other) noexcept;
    Descriptor& operator=(Descriptor&& other) noexcept;
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    /// -1 when nothing is open.
    int get() const { return value; }

    void close();

    /// Gives the open descriptor away; the caller closes it.
    int release();

  private:
    int value = -1;
};

/// The two ends of a pipe, both close-on-exec.
struct Pipe {
    Descriptor read_end;
    Descriptor write_end;
};

/// Throws std::system_error.
Pipe make_pipe();

/// Passes on what a system call has returned, or throws std::system_error with errno and `call` if
/// that is negative.
int checked(int result, const char* call);
