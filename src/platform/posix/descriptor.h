// A file descriptor with an owner. Moves only; closed when the owner goes.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace kalmora {

// How any file is opened to be read: a pipe or a terminal of that name neither blocks nor takes the program
// over.
inline constexpr int kReadFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            Close();
            number_ = std::exchange(other.number_, -1);
        }
        return *this;
    }

    int Get() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }
    // Gives the descriptor away.
    int Release() { return std::exchange(number_, -1); }
    // True when nothing was open or the system closed it without a late write error.
    bool Close() { return number_ < 0 || close(std::exchange(number_, -1)) == 0; }

private:
    int number_ = -1;
};

}  // namespace kalmora
