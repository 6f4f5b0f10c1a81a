// Face: what a control shows on a form, and how it takes the user's input.
//
// The control owns its face and calls it on its own thread. A face draws into any device context,
// so that containers can show it where there is no window, as while the form is designed. It is
// arranged anew in the area that it is given, with fonts and distances in the screen's pixels: it
// is not scaled to a printer's resolution. It takes input only through the window that it is given.
#pragma once

#include "com/Object.h"
#include "com/windows/Ambient.h"

#include <functional>
#include <memory>
#include <string>

namespace qx::com {

class Face {
public:
    virtual ~Face() = default;

    virtual void Draw(HDC context, const RECT& bounds, const Ambient& ambient) = 0;

    // The control got its window, in which the face may put its children, or loses it.
    virtual void Open(HWND /*window*/, const Ambient& /*ambient*/) {}
    virtual void Close() {}
    // The window's size or the ambient properties have changed.
    virtual void Arrange(const Ambient& /*ambient*/) {}
    // A message of the window that the control itself leaves alone; whether it was for the face.
    virtual bool Handle(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/,
                        LRESULT& /*result*/) {
        return false;
    }
    // A key pressed while the control is active; whether the face takes it from the container.
    virtual bool TakesKey(MSG& /*message*/) { return false; }
    // The letters that lead to a child together with Alt, and going there.
    [[nodiscard]] virtual std::wstring Mnemonics() const { return {}; }
    virtual bool TakesMnemonic(wchar_t /*letter*/) { return false; }
};

// A visible control's face is made of its parts; that of a service object shows an icon and
// the name of its class. `changed` is called whenever the face looks different; the object outlives
// the face.
[[nodiscard]] std::unique_ptr<Face> MakeFace(Object& object, std::function<void()> changed);

} // namespace qx::com
