#include "support/dialog.h"

#include <cstdint>

#include <windows.h>

namespace test {

struct Dialog::Native {
    HWND window;
};

Dialog::Dialog(const std::vector<int>& ids) : m_native(std::make_unique<Native>()) {
    m_native->window = CreateWindowExA(0, "#32770", "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr, nullptr,
                                       nullptr, nullptr);
    for (const int id : ids)
        CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 100, 20, m_native->window,
                        reinterpret_cast<HMENU>(std::intptr_t{id}), nullptr, nullptr);
}

Dialog::~Dialog() {
    DestroyWindow(m_native->window);
}

HWND Dialog::Get() const {
    return m_native->window;
}

} // namespace test
