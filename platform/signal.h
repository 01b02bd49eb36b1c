// A signal one thread waits on and others set. It resets as a wait returns, so each Set
// releases one wait; a Set with nobody waiting is kept for the next wait.
#pragma once

namespace plat {

class Signal {
public:
    Signal();
    ~Signal();
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    void Set();
    void Wait();

private:
    void* impl_ = nullptr;
};

}  // namespace plat
