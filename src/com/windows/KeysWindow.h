// KeysWindow: a keyboard as one window that handles mouse and keyboard input. Each key is an
// accessible object of its own.
//
// It reports to its parent with the messages below: wParam is the window's identifier, lParam the
// number of the key.
#pragma once

#include "com/faces/Part.h"
#include "com/windows/FaceDrawing.h"
#include "com/windows/KeysDrawing.h"

#include <string>
#include <vector>

namespace qx::com {

inline constexpr UINT kKeyPicked = WM_APP + 1;  // by a click, the space bar or a screen reader
inline constexpr UINT kKeyReached = WM_APP + 2; // by an arrow key

class KeysWindow {
public:
    [[nodiscard]] static HWND Create(HWND parent, int id);
    // Lives as long as its window; null if the window is not a KeysWindow of this thread.
    [[nodiscard]] static KeysWindow* Of(HWND window);
    static void Unregister();

    void Show(const PartState& state, HFONT font, const FaceColours& colours);

    [[nodiscard]] const PartState& Shown() const { return m_state; }
    [[nodiscard]] std::vector<RECT> Places() const;               // relative to the window
    [[nodiscard]] int FocusRow() const { return RowOf(m_focus); } // in Shown().keys; -1 for none
    [[nodiscard]] int RowAt(POINT point) const;
    void Pick(int row); // as if the user had picked the key

private:
    explicit KeysWindow(HWND window) : m_window(window) {}
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint();
    void Draw(HDC context, const RECT& area) const;
    bool HandleKey(WPARAM key);
    void FocusOn(int row);
    void Release(POINT point);
    void Point(const MSG& mouse);
    void ShowToolTip(int row);
    [[nodiscard]] int RowOf(int index) const;
    [[nodiscard]] int RowToward(int dx, int dy) const;

    HWND m_window;
    PartState m_state;
    HFONT m_font = nullptr; // the face's font, not owned
    COLORREF m_background = 0;
    bool m_isHighContrast = false;
    int m_focus = -1; // the number of the key
    int m_pressed = -1;
    HWND m_toolTip = nullptr;
    std::string m_toolTipText; // of the key under the pointer; empty for none
    int m_pointed = -1;        // the number of that key
};

} // namespace qx::com
