/// \file
/// Selections that are written as letters.
#pragma once

#include <list>
#include <string>
#include <vector>

#include "support/support.h"

namespace test {

/// A kind that selections do not know.
struct Other : qev::CCadObject {
    qev::cad_t GetType() const override { return 0x1300; }
};

/// The object of a letter, which stands in its attribute "letter".
inline qev::CCadObject* Make(char letter) {
    qev::CCadObject* const object = letter == 't'   ? TextOf(Make('c'))
                                    : letter == 'x' ? new Other
                                    : letter == 'c' ? Object("circle 0 0 1").release()
                                    : letter == 'o' ? Object("line 0 0 2 3").release()
                                                    : Object("dot 0 0").release();
    if (letter == 't') static_cast<qev::CCadText*>(object)->GetTextGroup()->PushBack(Make('o'));
    object->SetKey("letter", std::string(1, letter).c_str());
    return object;
}

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
    const std::list<qev::CCadObject*>* List() const { return &GetObjectsList(); }
};

} // namespace test
