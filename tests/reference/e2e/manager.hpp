/* The network manager as a process of the test. */
#pragma once

#include <sys/types.h>

namespace e2e {

class Manager {
public:
    /* Starts it and waits until it owns its bus name; throws when it doesn't get that far. */
    Manager();
    /* Kills it if it still runs. */
    ~Manager();
    Manager(const Manager &) = delete;
    Manager &operator=(const Manager &) = delete;

    /* Asks it to end and answers its exit status. */
    int stop();
    void sendSignal(int signal) const;
    /* Ends it as a crash would. */
    void kill();

private:
    int wait();

    pid_t pid_ = -1;
};

/* Whether a manager owns the bus name; false also without a bus. */
bool managerOwnsItsName();

} // namespace e2e
