/// \file
/// Selections written as letters, so that one short text shows a whole tree.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "support/support.h"

namespace test {

/// A group whose members are the letters of a text: c a closed contour, o an open one, d a dot, t a text with
/// the outlines of c and o, x an object of the kind 0x1300, and brackets a group round letters.
struct Letters : qev::CCadGroup {
    explicit Letters(const std::string& letters) {
        std::vector<qev::CCadGroup*> open{this};
        for (const char letter : letters) {
            if (letter == '(') open.push_back(AddGroup(*open.back()));
            if (letter == ')') open.pop_back();
            if (letter >= 'c') open.back()->PushBack(Make(letter));
        }
    }
    /// The members, as the functions that take a selection want them.
    const std::list<qev::CCadObject*>* List() const { return &GetObjectsList(); }
    /// The letters of the objects in a list.
    static std::string Of(const std::list<qev::CCadObject*>& list) {
        std::string letters;
        for (const qev::CCadObject* object : list) letters += object->GetKey("letter").GetString();
        return letters;
    }

private:
    struct Other : qev::CCadObject {
        qev::cad_t GetType() const override { return 0x1300; }
    };
    static qev::CCadObject* MakeText() {
        qev::CCadText* const text = TextOf(Make('c'));
        text->GetTextGroup()->PushBack(Make('o'));
        return text;
    }
    static qev::CCadObject* Make(char letter) {
        qev::CCadObject* const object = letter == 't'   ? MakeText()
                                        : letter == 'x' ? new Other
                                        : letter == 'c' ? Object("circle 0 0 1").release()
                                        : letter == 'o' ? Object("line 0 0 2 3").release()
                                                        : Object("dot 0 0").release();
        object->SetKey("letter", std::string(1, letter).c_str());
        return object;
    }
};

} // namespace test
