#include "bindings/qt/active_window.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <QWindow>

#include "bindings/qt/x_server.h"

namespace korvane::test {
namespace {

// On X11 the tests of running Calcs show that it hears.
TEST(QtActiveWindow, HearsNothingWithoutAnXServer) {
    if (qt::XServer()) GTEST_SKIP() << "on an X server";
    int calls = 0;
    qt::ActiveWindow active([&] { ++calls; });
    active.Look();
    QThread::msleep(200);
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(active.Holder());
    const QWindow window;
    qt::ActivateAny(window);
}

}  // namespace
}  // namespace korvane::test
