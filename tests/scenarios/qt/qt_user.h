// A user before the windows as widgets, on a desktop that nobody sees: his keys
// and clicks go through the toolkit.
#pragma once

#include <QWidget>

#include "bindings/qt/qt_view.h"
#include "bindings/resources/built_in_pictures.h"
#include "scenarios/user.h"
#include "scenarios/world.h"

namespace korvane::test {

class QtUser : public User {
public:
    // Lays the world's screen out as the desktop is. The world outlives him.
    explicit QtUser(World& world);
    ~QtUser() override;

    void Press(platform::Form& window, Key key) override;
    void ClickRow(platform::Form& window, std::int32_t node) override;
    void ClickArrow(platform::Form& window, std::int32_t node) override;
    void PutCaret(platform::Form& window, std::int32_t position) override;
    void SelectText(platform::Form& window, platform::TextSpan span) override;
    void ClickBox(platform::Form& window, const char16_t* box) override;
    void ClickClose(platform::Form& window) override;
    void DragSplitter(platform::Form& window, int down) override;
    void Resize(platform::Form& window, int wider, int higher) override;
    void Close(platform::Form& window) override;
    void BringToFront(platform::Form& window) override;
    void Rest() override;
    void ExpectToSeeAll() override;

private:
    // Fails the test unless the window is in front.
    qt::FormWindow& Shown(const platform::Form& window);
    template <class W>
    W& Widget(const platform::Form& window, const char16_t* name);
    QPoint PlaceOf(const platform::Form& window, std::int32_t position);

    World& world_;
    resources::BuiltInPictures pictures_;
    qt::QtView view_;
};

}  // namespace korvane::test
