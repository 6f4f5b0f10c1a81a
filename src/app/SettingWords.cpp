#include "app/SettingWords.h"

#include "app/Language.h"
#include "app/sections/Entries.h"
#include "views/LineIcon.h"

#include <QCoreApplication>

#include <algorithm>
#include <string>
#include <vector>

namespace qx::app {

namespace {

// Of settings that any section may have.
constexpr SettingWord kCommonWords[] = {
    {"fixedBytes", QT_TRANSLATE_NOOP("SettingWords", "Fixed bytes")},
};

QString Translated(const char* text) {
    return QCoreApplication::translate("SettingWords", text);
}

const SectionEntry* EntryOf(std::string_view key) {
    const auto* const* found =
        std::find_if(std::begin(kSectionEntries), std::end(kSectionEntries),
                     [&](const SectionEntry* entry) { return entry->key == key; });
    return found == std::end(kSectionEntries) ? nullptr : *found;
}

std::vector<std::string> TranslatedSteps(const host::SettingName& name) {
    const SectionEntry* section = EntryOf(name.section);
    if (section == nullptr)
        return {};
    const auto wordOf = [section](const host::NamePart& part) {
        return WordOf(*section, part.key).toStdString();
    };
    return host::StepsOf(name, wordOf, LanguageCode());
}

} // namespace

QString SectionTitle(std::string_view sectionKey) {
    const SectionEntry* entry = EntryOf(sectionKey);
    return entry == nullptr ? QString() : Translated(entry->title);
}

std::string HelpPageOf(std::string_view sectionKey) {
    const SectionEntry* entry = EntryOf(sectionKey);
    return std::string(entry == nullptr || entry->help.empty() ? sectionKey : entry->help);
}

PageGroup GroupOf(std::string_view sectionKey) {
    const SectionEntry* entry = EntryOf(sectionKey);
    return entry == nullptr ? PageGroup::Tools : entry->group;
}

QString TitleOf(PageGroup group) {
    switch (group) {
    case PageGroup::Device:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "Device"));
    case PageGroup::Readers:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "Readers"));
    case PageGroup::Keys:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "Programmable keys"));
    case PageGroup::Tools:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "Tools"));
    }
    return {};
}

std::vector<std::string> SectionsByGroup() {
    std::vector<const SectionEntry*> entries(std::begin(kSectionEntries),
                                             std::end(kSectionEntries));
    std::ranges::stable_sort(entries, {}, &SectionEntry::group);
    std::vector<std::string> keys;
    for (const SectionEntry* entry : entries)
        keys.emplace_back(entry->key);
    return keys;
}

QIcon SectionIcon(std::string_view sectionKey) {
    const SectionEntry* entry = EntryOf(sectionKey);
    return entry == nullptr ? QIcon() : views::LineIcon(QString::fromLatin1(entry->icon));
}

QString WordOf(const SectionEntry& section, std::string_view key) {
    const auto find = [key](std::span<const SettingWord> words) {
        const auto found = std::find_if(words.begin(), words.end(),
                                        [key](const SettingWord& word) { return word.key == key; });
        return found == words.end() ? QString() : Translated(found->text);
    };
    const QString own = find(section.words);
    return own.isEmpty() ? find(kCommonWords) : own;
}

QString ReleasesText() {
    return Translated(QT_TRANSLATE_NOOP("SettingWords", "Show key releases"));
}

QString ProgrammedText(int keys) {
    return keys == 0
               ? Translated(QT_TRANSLATE_NOOP("SettingWords", "No key programmed"))
               : QCoreApplication::translate("SettingWords", "%n key(s) programmed", nullptr, keys);
}

QString NameText(const host::SettingName& name) {
    std::vector<std::string> steps = TranslatedSteps(name);
    steps.insert(steps.begin(), SectionTitle(name.section).toStdString());
    return QString::fromStdString(host::JoinedSteps(steps));
}

QString NameText(const host::History::Changed& step) {
    const int changes = static_cast<int>(step.others) + 1;
    const QString name = NameText(step.name);
    return changes == 1
               ? name
               : QCoreApplication::translate("SettingWords", "%1 (%n change(s))", nullptr, changes)
                     .arg(name);
}

QString NameInSection(const host::SettingName& name) {
    return name.parts.empty() ? SectionTitle(name.section)
                              : QString::fromStdString(host::JoinedSteps(TranslatedSteps(name)));
}

QString WithGroup(const QString& name, const QString& group) {
    return group.isEmpty() ? name : name + QStringLiteral(" › ") + group;
}

QString ValueText(const host::SettingValue& value) {
    using Kind = host::SettingValue::Kind;
    switch (value.kind) {
    case Kind::Text:
        return QString::fromStdString(value.text);
    case Kind::Quoted:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "\"%1\""))
            .arg(QString::fromStdString(value.text));
    case Kind::Off:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "off"));
    case Kind::On:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "on"));
    case Kind::Empty:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "(empty)"));
    case Kind::None:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "(none)"));
    case Kind::Damaged:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "(damaged)"));
    case Kind::Sound:
        return Translated(QT_TRANSLATE_NOOP("SettingWords", "(sound)"));
    }
    return {};
}

} // namespace qx::app
