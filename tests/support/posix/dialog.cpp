#include "support/dialog.h"

#include <map>

namespace test {

struct Dialog::Native : CIDialog {
    std::map<int, CString> texts;

    void SetItemText(int id, const char* text) override {
        if (texts.contains(id)) texts[id] = text;
    }
    CString GetItemText(int id) const override {
        const auto found = texts.find(id);
        return found == texts.end() ? CString() : found->second;
    }
};

Dialog::Dialog(const std::vector<int>& ids) : m_pNative(std::make_unique<Native>()) {
    for (const int id : ids) m_pNative->texts[id];
}

Dialog::~Dialog() = default;

HWND Dialog::Get() const {
    return m_pNative.get();
}

} // namespace test
