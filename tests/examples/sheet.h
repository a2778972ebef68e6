/// \file
/// Drawings of parts and holes, and the manager with one plug-in.
#pragma once

#include <qevtechnics/qevtechnics.h>

#include "support/shapes.h"

namespace test {

/// A drawing of closed contours that technics are put on. Every path is asked by its role.
struct Sheet {
    /// Objects from their texts.
    explicit Sheet(const std::vector<std::string>& objects) {
        for (const std::string& text : objects) Fill(root, {Object(text).release()});
    }
    ~Sheet() { Manager().SetDrawing(nullptr); }

    static qev::CTechnicsManager& Manager() { return *qev::GetTechnicsManager(); }

    /// Adds the technics of a text to all objects; answers the message, or what was thrown. From then on this
    /// is the manager's drawing.
    std::string Add(const std::string& text) {
        Manager().SetDrawing(&root);
        std::string message;
        try {
            std::list<qev::CCadObject*> changed, refused;
            Manager().AddAllTechnics(&root.GetObjectsList(), text, "", &changed, &refused, message);
            EXPECT_EQ((changed.size() + refused.size()) % root.GetObjectsList().size(),
                      0u); // each is in a list
            Manager().UpdataViewDataNotify(&changed);
            return message + Manager().GetLastErrorText();
        } catch (const char* why) {
            return why;
        }
    }

    /// The paths of an object with a role.
    static std::vector<const qev::CCadObject*> Paths(const qev::CCadObject& object, const char* role) {
        std::vector<const qev::CCadObject*> paths;
        for (const qev::CCadObject* path : object.GetToolPathList())
            if (qev::kit::HasRole(*path, role)) paths.push_back(path);
        return paths;
    }

    qev::CCadGroup root;
};

} // namespace test
