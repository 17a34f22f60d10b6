// A view's program while it runs.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <string>
#include <vector>

#include "bindings/view_link/socket.h"

namespace korvane::view_link {

// A view ends by itself when its link does. One that does not is killed, so that
// none is left behind, not even as a zombie.
class ViewProcess {
public:
    // Starts the program command[0], which is a path, with one end of the link as
    // its descriptor 3. It inherits this process's environment and standard
    // error, and nothing else: the other standard streams are /dev/null, and
    // every signal is as by default. Raises, naming the program.
    explicit ViewProcess(std::vector<std::string> command);
    // Closes the link unless it was taken, and ends the program at once.
    ~ViewProcess();
    ViewProcess(const ViewProcess&) = delete;
    ViewProcess& operator=(const ViewProcess&) = delete;

    // Positive, and 0 when the program has ended.
    pid_t id() const { return id_; }
    // Our end of the link; can be taken once.
    Socket TakeLink() { return std::move(link_); }

    // Whether the program has ended; it then leaves no trace. Never waits.
    bool HasEnded();
    // Makes it end; HasEnded tells when it has.
    void Kill();
    // Waits until it has ended, and kills it after `grace`. The link is to be
    // closed by now.
    void End(std::chrono::milliseconds grace);

private:
    void WaitForEnd();

    pid_t id_ = 0;
    Socket link_;
};

}  // namespace korvane::view_link
