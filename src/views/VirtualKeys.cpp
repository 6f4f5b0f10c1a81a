#include "views/VirtualKeys.h"

#include <QKeyEvent>

namespace qx::views {

namespace {

constexpr int kPacket = 0xE7; // a character without its own key

struct NamedKey {
    int key;
    Integer code;
};

constexpr NamedKey kNamedKeys[] = {
    {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},          {Qt::Key_Backtab, 9}, {Qt::Key_Clear, 12},
    {Qt::Key_Return, 13},   {Qt::Key_Enter, 13},       {Qt::Key_Shift, 16},  {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},      {Qt::Key_AltGr, 18},       {Qt::Key_Pause, 19},  {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},   {Qt::Key_Space, 32},       {Qt::Key_PageUp, 33}, {Qt::Key_PageDown, 34},
    {Qt::Key_End, 35},      {Qt::Key_Home, 36},        {Qt::Key_Left, 37},   {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},    {Qt::Key_Down, 40},        {Qt::Key_Print, 44},  {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},   {Qt::Key_Help, 47},        {Qt::Key_Meta, 91},   {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144}, {Qt::Key_ScrollLock, 145},
};

constexpr NamedKey kKeypadKeys[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},   {Qt::Key_Comma, 110},
    {Qt::Key_Minus, 109},    {Qt::Key_Period, 110}, {Qt::Key_Slash, 111},
};

bool IsBetween(int key, int first, int last) {
    return key >= first && key <= last;
}

int CodeOf(int key, bool isOnKeypad) {
    if (isOnKeypad) {
        if (IsBetween(key, Qt::Key_0, Qt::Key_9))
            return 96 + key - Qt::Key_0;
        for (const NamedKey& keypadKey : kKeypadKeys)
            if (keypadKey.key == key)
                return keypadKey.code;
    }
    for (const NamedKey& namedKey : kNamedKeys)
        if (namedKey.key == key)
            return namedKey.code;
    if (IsBetween(key, Qt::Key_F1, Qt::Key_F24))
        return 112 + key - Qt::Key_F1;
    if (IsBetween(key, Qt::Key_0, Qt::Key_9) || IsBetween(key, Qt::Key_A, Qt::Key_Z))
        return key; // the character's own code, in upper case
    return 0;
}

} // namespace

Integer VirtualKeyCode(const QKeyEvent& event) {
#ifdef Q_OS_WIN
    if (event.nativeVirtualKey() != 0)
        return static_cast<Integer>(event.nativeVirtualKey());
#endif
    const int code = CodeOf(event.key(), event.modifiers().testFlag(Qt::KeypadModifier));
    const bool isSign = !event.text().isEmpty() && event.text().front().isPrint();
    return static_cast<Integer>(code != 0 || !isSign ? code : kPacket);
}

} // namespace qx::views
