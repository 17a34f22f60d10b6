// The busy state: while the system opens a window the host raises no events.
#pragma once

namespace korvane {

struct SharedState;

// Raises what the host raises; EndBusy is due all the same.
void BeginBusy(SharedState& state);

// Gives status bar, events and pointer back. All of it is tried; raises the
// first failure.
void EndBusy(SharedState& state);

// Begins now and ends on every way out. End() ends it early and raises; the end
// of the scope ends it silently.
class BusyScope {
public:
    explicit BusyScope(SharedState& state);
    BusyScope(const BusyScope&) = delete;
    BusyScope& operator=(const BusyScope&) = delete;
    ~BusyScope();
    void End();

private:
    SharedState& state_;
    bool busy_ = true;
};

}  // namespace korvane
