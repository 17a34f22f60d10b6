// Workbooks that want to reach out.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "apps/command/office_document.h"
#include "base/text.h"
#include "files_under_test.h"

namespace korvane::command {
namespace {

using testing::TestFolder;
using testing::WorkbookWith;

// Listens on a port of this machine; nobody may knock.
class Listener {
public:
    Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        bind(socket_, reinterpret_cast<sockaddr*>(&address), size);
        listen(socket_, 8);
        getsockname(socket_, reinterpret_cast<sockaddr*>(&address), &size);
        port_ = ntohs(address.sin_port);
    }
    ~Listener() { close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::string Url(const char* file) const {
        return "http://127.0.0.1:" + std::to_string(port_) + "/" + file;
    }
    bool WasCalled() const {
        pollfd watched{socket_, POLLIN, 0};
        return poll(&watched, 1, 300) > 0;
    }

private:
    int socket_;
    int port_ = 0;
};

TEST(HostileWorkbook, NothingIsFetchedAndNothingConnects) {
    const Listener listener;
    TestFolder folder;
    for (const std::string& formula :
         {"=LEN(COM.MICROSOFT.WEBSERVICE(&quot;" + listener.Url("a") + "&quot;))+1",
          "='" + listener.Url("b.ods") + "'#$Sheet1.A1+1",
          "=INDIRECT(&quot;'" + listener.Url("c.ods") + "'#$Sheet1.A1&quot;)+1",
          "=DDE(&quot;soffice&quot;;&quot;" + listener.Url("d.ods") +
              "&quot;;&quot;A1&quot;)&amp;&quot;x&quot;"}) {
        OfficeDocument document(folder.Write("hostile.fods", WorkbookWith(formula)));
        for (const bool precise : {false, true}) {
            EXPECT_TRUE(document.Explore(u"Data!A1", true, precise).ok) << formula;
        }
        EXPECT_FALSE(listener.WasCalled()) << formula;
    }
}

}  // namespace
}  // namespace korvane::command
