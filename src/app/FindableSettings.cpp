#include "app/FindableSettings.h"

#include "app/Places.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"
#include "views/Bindings.h"

#include <set>

namespace qx::app {

namespace {

// The name of the group of keys that send this sequence: "Block 3 (4 keys)"; usually empty.
QString GroupText(Workbench& workbench, const host::Setting& setting) {
    if (setting.name.elementParts == 0 || !setting.place.ends_with("/sequence"))
        return {};
    return workbench.Faces()
        .Of(setting.name.section)
        .GroupOf(static_cast<int>(Place::Of(setting.place).numbers.back()));
}

} // namespace

std::vector<Findable> FindableSettings(Workbench& workbench,
                                       const std::function<void(const std::string& place)>& goTo) {
    std::vector<Findable> all;
    std::set<std::string> programmed; // elements of lists, by their places
    const auto add = [&](const host::Setting& setting, const QString& value) {
        all.push_back(
            {setting.name.elementParts > 0 ? Findable::Group::Keys : Findable::Group::Settings,
             WithGroup(NameText(setting.name), GroupText(workbench, setting)), value,
             [goTo, place = setting.place] { goTo(place); }});
        Findable& added = all.back();
        for (const host::NamePart& part : setting.name.parts)
            added.otherName += views::ToQt(part.longCaption);
    };
    const host::Configuration& configuration = workbench.Configuration();
    for (const host::Setting& setting : configuration.List(workbench.History().AllSections())) {
        add(setting, ValueText(setting.value));
        if (setting.name.elementParts == 0)
            continue;
        all.back().isPart = !setting.place.ends_with("/sequence");
        programmed.insert(setting.place.substr(0, setting.place.rfind('/')));
    }
    std::vector<host::Section*> present = workbench.History().AllSections();
    std::erase_if(present, [&](const host::Section* each) { return !workbench.Has(*each); });
    for (const host::Setting& element : configuration.List(present, host::Listed::Elements))
        if (!programmed.contains(element.place))
            add(element, {});
    return all;
}

} // namespace qx::app
