/// \file
/// A dialog with edit controls: a real one on Windows, a host's elsewhere.
#pragma once

#include <memory>
#include <vector>

#include <qev/platform.h>

namespace test {

class Dialog {
public:
    /// With one empty edit control for each number.
    explicit Dialog(const std::vector<int>& ids);
    ~Dialog();

    HWND Get() const;

private:
    struct Native;
    std::unique_ptr<Native> m_pNative;
};

} // namespace test
