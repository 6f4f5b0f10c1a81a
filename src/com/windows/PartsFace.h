// PartsFace: the face of a visible control, built from the table of its parts (com/faces/Faces.h):
// native child windows at run time, drawn parts where there is no window and while the form is
// designed.
#pragma once

#include "com/faces/Faces.h"
#include "com/windows/Face.h"
#include "com/windows/FaceDrawing.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace qx::com {

class PartsFace : public Face {
public:
    // `changed` is called whenever the face looks different. The object is kept alive during its
    // actions; pass null if the caller does that.
    PartsFace(Object* object, FaceTable table, std::function<void()> changed);
    ~PartsFace() override;

    void Draw(HDC context, const RECT& bounds, const Ambient& ambient) override;
    void Open(HWND window, const Ambient& ambient) override;
    void Close() override;
    void Arrange(const Ambient& ambient) override;
    bool Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    bool TakesKey(MSG& message) override;
    [[nodiscard]] std::wstring Mnemonics() const override;
    bool TakesMnemonic(wchar_t letter) override;
    // Gives the focus to the first (or last) child that can have it; false if there is none.
    bool FocusOn(bool isLast);

private:
    struct Child {
        Part* part;
        HWND window;
    };

    void MakeChildren(Part& part);
    void MakeToolTips();
    void Refreshed();
    void ShowAll();
    void ShowToolTip(const Child& child);
    void PlaceChildren();
    void RedrawAll();
    [[nodiscard]] Child* ChildOf(WPARAM id);
    void Act(Part& part, const PartInput& input);
    void NoteFocus(const Part& part, bool hasCome);
    void RunAction(const std::function<void()>& action);
    bool Notify(WPARAM id, UINT notification);
    bool ColourOf(HDC context, HWND child, LRESULT& result);
    bool TakesTab();
    bool TakesEnter(MSG& message);
    [[nodiscard]] std::vector<HWND> TabStops() const; // in Tab order
    void TakeFocus(std::string_view id);

    Object* m_object;
    FaceTable m_table;
    std::function<void()> m_changed;
    std::vector<Subscription> m_subscriptions;

    HWND m_window = nullptr; // has children while the control is active
    HWND m_toolTips = nullptr;
    std::vector<Child> m_children;
    std::unique_ptr<FaceFont> m_font;
    std::optional<FaceColours> m_colours;
    HBRUSH m_brush = nullptr; // of the background
    bool m_reacts = true;
    bool m_isShowing = false;
};

} // namespace qx::com
