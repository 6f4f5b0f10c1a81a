// Face: draws a control on a form and handles the user's input.
//
// The control owns its face and calls it on its own thread. A face draws into any device context,
// so that containers can show it without a window, for example while the form is designed. It is
// laid out afresh in the area that it is given, with fonts and distances in screen pixels: it is
// not scaled to a printer's resolution. It gets input only through the window that it is given.
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

    // The control has got its window, in which the face may create children, or loses it.
    virtual void Open(HWND /*window*/, const Ambient& /*ambient*/) {}
    virtual void Close() {}
    // The window's size or the ambient properties have changed.
    virtual void Arrange(const Ambient& /*ambient*/) {}
    // A message that the control does not handle itself; true if the face has handled it.
    virtual bool Handle(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/,
                        LRESULT& /*result*/) {
        return false;
    }
    // A key pressed while the control is active; true if the face consumes it.
    virtual bool TakesKey(MSG& /*message*/) { return false; }
    // The mnemonic letters of the children (with Alt), and giving the focus to the child of one.
    [[nodiscard]] virtual std::wstring Mnemonics() const { return {}; }
    virtual bool TakesMnemonic(wchar_t /*letter*/) { return false; }
};

// A visible control's face is made of its parts; that of a service object shows an icon and the
// name of its class. `changed` is called whenever the face looks different. The object outlives the
// face.
[[nodiscard]] std::unique_ptr<Face> MakeFace(Object& object, std::function<void()> changed);

} // namespace qx::com
