// UserForm: a window on which a container that is not ours, that of wine's atl100, hosts a control,
// and what a user does on it. What is not there throws std::runtime_error.
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

    // A button or a check box, by its text.
    void Press(const std::wstring& text);
    // A line of a list, by its text.
    void Choose(const std::wstring& text);
    // A key, by the beginning of the name that a screen reader would say.
    void Pick(const std::wstring& name);
    void Slide(int position);
    // Into the field that takes texts.
    void Type(const std::wstring& text);

private:
    // The first visible child window of the class for which `fits` says yes.
    [[nodiscard]] HWND Child(const wchar_t* windowClass, const std::wstring& sought,
                             const std::function<bool(HWND)>& fits) const;

    HWND m_window;
    com::ComPtr<IUnknown> m_container;
};

} // namespace qx::test
