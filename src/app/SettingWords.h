// SettingWords: settings and values in the language of the program, by the words of their sections.
#pragma once

#include "host/History.h"
#include "host/SettingName.h"

#include <QIcon>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace qx::app {

enum class PageGroup;
struct SectionEntry;

// The name of a section: "Magnetic card reader"; empty for an unknown key.
[[nodiscard]] QString SectionTitle(std::string_view sectionKey);
// The section whose page of help is about it; the key itself for any other page.
[[nodiscard]] std::string HelpPageOf(std::string_view sectionKey);
// The group of pages that it belongs to; Tools for an unknown key.
[[nodiscard]] PageGroup GroupOf(std::string_view sectionKey);
[[nodiscard]] QString TitleOf(PageGroup group);
// The sections as lists of pages have them: group by group.
[[nodiscard]] std::vector<std::string> SectionsByGroup();
// Its icon; none for an unknown key.
[[nodiscard]] QIcon SectionIcon(std::string_view sectionKey);
// The section's word for a member of its document, as its page has it.
[[nodiscard]] QString WordOf(const SectionEntry& section, std::string_view key);
// Of the switch that every page with sequences has.
[[nodiscard]] QString ReleasesText();

// "12 keys programmed", the summary of a section with keys.
[[nodiscard]] QString ProgrammedText(int keys);

// "Layered function keys › Layer 3, F4 › Description"; a section as a whole by its title.
[[nodiscard]] QString NameText(const host::SettingName& name);
// Of a step: "POS keys › Key 12 (F12) (3 changes)".
[[nodiscard]] QString NameText(const host::History::Changed& step);
// The same without the section, for a list under its title.
[[nodiscard]] QString NameInSection(const host::SettingName& name);
// The name of a key with that of the group it belongs to, which may be empty: "Key 3 (F2) › Block 1
// (4 keys)".
[[nodiscard]] QString WithGroup(const QString& name, const QString& group);
[[nodiscard]] QString ValueText(const host::SettingValue& value);

} // namespace qx::app
