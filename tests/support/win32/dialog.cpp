#include "support/dialog.h"

#include <cstdint>

#include <windows.h>

namespace test {

struct Dialog::Native {
    HWND window;
};

Dialog::Dialog(const std::vector<int>& ids) : m_pNative(std::make_unique<Native>()) {
    m_pNative->window = CreateWindowExA(0, "#32770", "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr,
                                        nullptr, nullptr, nullptr);
    for (const int id : ids)
        CreateWindowExA(0, "EDIT", "", WS_CHILD, 0, 0, 100, 20, m_pNative->window,
                        reinterpret_cast<HMENU>(std::intptr_t{id}), nullptr, nullptr);
}

Dialog::~Dialog() {
    DestroyWindow(m_pNative->window);
}

HWND Dialog::Get() const {
    return m_pNative->window;
}

} // namespace test
