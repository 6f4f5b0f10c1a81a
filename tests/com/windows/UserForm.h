// UserForm: a window in which a container that we have not written (that of wine's atl100) hosts a
// control, and the user's actions on it. Throws std::runtime_error if a part does not exist.
#pragma once

#include "com/windows/Com.h"

#include <functional>
#include <string>

namespace qx::test {

class UserForm {
public:
    explicit UserForm(IUnknown* control);
    ~UserForm();
    UserForm(const UserForm&) = delete;
    UserForm& operator=(const UserForm&) = delete;

    // A button or a check box with this text.
    void Press(const std::wstring& text);
    // A line of a list with this text.
    void Choose(const std::wstring& text);
    // A key whose accessible name begins like this.
    void Pick(const std::wstring& name);
    void Slide(int position);
    // Types into the text field.
    void Type(const std::wstring& text);

private:
    // The first visible child window of the class for which `fits` returns true.
    [[nodiscard]] HWND Child(const wchar_t* windowClass, const std::wstring& sought,
                             const std::function<bool(HWND)>& fits) const;

    HWND m_window;
    com::ComPtr<IUnknown> m_container;
};

} // namespace qx::test
