// SectionFaces: the faces of all sections of a configuration.
//
// Nothing here is an edit; the caller must not record it as one.
#pragma once

#include "app/sections/SectionFace.h"
#include "host/Configuration.h"

#include <memory>
#include <string_view>
#include <vector>

namespace qx::app {

class SectionFaces {
public:
    // The configuration outlives it. No keyboard is there at first.
    explicit SectionFaces(host::Configuration& configuration);

    // Of a section of the configuration.
    [[nodiscard]] SectionFace& Of(std::string_view key) const;

    // Sets all texts of every control in the current language, and makes it show them.
    void Translate();
    void AnswerWith(EditRequests& edits);
    // The controls use this keyboard's capabilities from now on.
    void Follow(host::Session& keyboard);
    // Without a keyboard, all settings of a document can be edited.
    void FollowNone();
    // Shows everything by the preferences as they are now.
    void Apply(const QXProgSettings& preferences);

private:
    struct Named {
        std::string_view key;
        std::unique_ptr<SectionFace> face;
    };

    host::Configuration& m_configuration;
    std::vector<Named> m_faces;
    bool m_showsReleases = false;
};

} // namespace qx::app
