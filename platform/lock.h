// A recursive lock, like a Win32 critical section: the thread that holds it may enter again.
// The control store's operations call each other while holding it.
#pragma once

namespace plat {

struct Lock {
    void* impl = nullptr;  // owned by the implementation between LockInit and LockDelete
};

void LockInit(Lock& lock);
void LockEnter(Lock& lock);
// Enters when nobody else holds it; false at once otherwise.
bool LockTryEnter(Lock& lock);
// Enters when it can be had within the time; false otherwise (the caller then must not wait
// for it: whoever holds it may be waiting on a device that stopped sending).
bool LockEnterWithin(Lock& lock, unsigned milliseconds);
void LockLeave(Lock& lock);
void LockDelete(Lock& lock);

// Holds a lock for one scope.
class LockHold {
public:
    explicit LockHold(Lock& lock) : lock_(lock) { LockEnter(lock_); }
    ~LockHold() { LockLeave(lock_); }
    LockHold(const LockHold&) = delete;
    LockHold& operator=(const LockHold&) = delete;

private:
    Lock& lock_;
};

}  // namespace plat
