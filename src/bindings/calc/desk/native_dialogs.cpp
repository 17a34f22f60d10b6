#include "bindings/calc/desk/native_dialogs.h"

#include <dlfcn.h>

#include <memory>

namespace korvane::calc {

namespace {

// What is used of GTK 3 and 4, where these functions are the same. This component is
// loaded by offices that have no GTK, so it is not linked with it.
class Gtk {
public:
    // Of the library that this process has loaded already, if it has.
    explicit Gtk(const char* library)
        : library_(::dlopen(library, RTLD_LAZY | RTLD_NOLOAD), &Close) {
        Find(listWindows_, "gtk_window_list_toplevels");
        Find(isModal_, "gtk_window_get_modal");
        Find(isVisible_, "gtk_widget_get_visible");
        Find(freeList_, "g_list_free");
    }

    bool HasModalWindow() const {
        if (!listWindows_ || !isModal_ || !isVisible_ || !freeList_) return false;
        bool has = false;
        List* const windows = listWindows_();
        for (const List* one = windows; one != nullptr; one = one->next) {
            has = has || (isModal_(one->data) != 0 && isVisible_(one->data) != 0);
        }
        freeList_(windows);
        return has;
    }

private:
    // GList, which is laid out so for good: its users read it without functions.
    struct List {
        void* data;
        List* next;
        List* previous;
    };

    static void Close(void* library) {
        if (library != nullptr) ::dlclose(library);
    }
    template <class Function>
    void Find(Function& function, const char* name) {
        if (library_) function = reinterpret_cast<Function>(::dlsym(library_.get(), name));
    }

    std::unique_ptr<void, void (*)(void*)> library_;
    List* (*listWindows_)() = nullptr;
    int (*isModal_)(void* window) = nullptr;
    int (*isVisible_)(void* widget) = nullptr;
    void (*freeList_)(List* list) = nullptr;
};

}  // namespace

bool IsGtkDialogWaiting() {
    return Gtk("libgtk-3.so.0").HasModalWindow() || Gtk("libgtk-4.so.1").HasModalWindow();
}

}  // namespace korvane::calc
