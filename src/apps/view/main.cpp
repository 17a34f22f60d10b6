// Shows the windows of the process that started it and tells that of what the
// user does, over the socket that it inherits as descriptor 3. Ends with it.
//
//   korvane-view              show windows
//   korvane-view --dark       with a dark palette, whatever the desktop's is
//   korvane-view --version
#include <sys/socket.h>

#include <QApplication>
#include <cstdio>
#include <cstring>

#include "apps/view/connection.h"
#include "apps/view/shown_windows.h"
#include "bindings/qt/dark_palette.h"
#include "bindings/qt/picture.h"
#include "bindings/resources/built_in_pictures.h"

namespace {

constexpr int kLink = 3;
constexpr int kExitGarbage = 2;

bool HasArgument(int argc, char** argv, const char* wanted) {
    for (int k = 1; k < argc; ++k) {
        if (std::strcmp(argv[k], wanted) == 0) return true;
    }
    return false;
}

bool IsSocket(int descriptor) {
    int type = 0;
    socklen_t size = sizeof type;
    return ::getsockopt(descriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0 && type == SOCK_STREAM;
}

// Windows stay above windows of other programs and where they were put only
// where the window system lets them: X11, also behind another one.
void ChoosePlatform() {
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return;
    if (!qEnvironmentVariableIsEmpty("DISPLAY")) qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

}  // namespace

int main(int argc, char** argv) {
    if (HasArgument(argc, argv, "--version")) {
        std::puts("korvane-view " KORVANE_VERSION);
        return 0;
    }
    if (!IsSocket(kLink)) {
        std::fputs("korvane-view is started by the program whose windows it shows\n", stderr);
        return kExitGarbage;
    }
    ChoosePlatform();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("korvane-view"));
    QApplication::setApplicationDisplayName(QString());
    QApplication::setQuitOnLastWindowClosed(false);  // the next window may come any time
    QApplication::setWindowIcon(
        korvane::qt::IconOf(korvane::resources::BuiltInPictures().Picture(u"IMGPROGRAM")));
    if (HasArgument(argc, argv, "--dark")) korvane::qt::UseDarkPalette();

    korvane::view::Connection connection(kLink);
    connection.onEnd = [](korvane::view::Connection::End end) {
        QApplication::exit(end == korvane::view::Connection::End::kGarbage ? kExitGarbage : 0);
    };
    const korvane::view::ShownWindows windows(connection);
    return QApplication::exec();
}
