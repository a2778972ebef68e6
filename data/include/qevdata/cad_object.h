/// \file
/// The base of everything that a drawing holds.
#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <memory>
#include <variant>

#include <qev/export.h>
#include <qev/platform.h>
#include <qevdata/cad_rect.h>
#include <qevdata/direction.h>
#include <qevdata/kinds.h>
#include <qevdata/segment.h>
#include <qevdata/technics.h>
#include <qevmath/ellipse.h>

namespace qev {

/// One piece of an outline: what length, distance, boxes and conversion are computed from.
using OutlinePiece = std::variant<SEGMENT, math::EllipticArc>;

/// A CAD object: an outline (or members), an identity, named attributes, flags and what machining hangs on
/// it.
///
/// Every virtual operation has a default, so that a host's own kind overrides what it has. An object owns its
/// technics, tool paths and inner object and deletes them; deleting an object never touches the list that
/// holds it. Objects are not copyable (Clone makes copies), CCadArc excepted.
///
/// Several threads may ask one object at the same time, by its constant methods and by functions that get it
/// as a constant one, also the first time, when it works out what it keeps; whoever changes it has it alone.
/// Different objects may be made, changed and destroyed by different threads, unless one holds the other.
class QEVDATA_API CCadObject {
public:
    virtual ~CCadObject();
    CCadObject& operator=(const CCadObject&) = delete;

    /// The kind code; 0 by default.
    virtual cad_t GetType() const;
    /// Whether the contour is closed; false by default.
    virtual bool IsClose() const;
    /// Where the contour starts; math::NoPoint() when it has no such point, which is the default.
    virtual math::DPOINT2 GetStartPoint() const;
    /// Where the contour ends, the start on a whole circle or ellipse; math::NoPoint() when it has
    /// no such point, which is the default.
    virtual math::DPOINT2 GetEndPoint() const;
    /// Number of segments of a segment contour; 0 by default.
    virtual int GetSegmentCount() const;
    /// The segment at an index; SEGMENT() by default and for an index out of range.
    virtual SEGMENT GetSegment(int index) const;
    /// Length in mm; 0 by default.
    virtual double GetLength() const;
    /// The exact bounding box; by default that of the pieces, the empty box without any. That of a container,
    /// whose members are walked, throws std::bad_alloc when memory is refused.
    virtual CadRect GetBoundRect() const;
    /// A new object with the same geometry, attributes, flags and inner object, owned by the caller; with a
    /// fresh id, or with this one's. Technics and tool paths are not copied, their text is. An object met
    /// inside itself is left out of the copy. Throws std::bad_alloc when memory is refused; nothing is lost
    /// then. Null by default.
    virtual CCadObject* Clone(bool newId) const;

    /// Number of pieces of the outline; by default that of the segments. Containers have none of their own.
    virtual int GetPieceCount() const;
    /// The piece at an index, which has to be one of the object's; by default the segment there. Pieces
    /// follow each other as the outline runs.
    virtual OutlinePiece GetPiece(int index) const;
    /// The members of a container, in drawing order; null for everything else.
    virtual const std::list<CCadObject*>* GetMembers() const;
    /// Which way the contour runs, as GetContourDirectionEx answers it; NONE by default.
    virtual CContourDirection::ContourDirection_T GetDirection() const;

    /// 0 for an object that was made without a fresh id and has not been given one.
    unsigned int GetID() const { return m_nID; }
    /// Takes any number; whether another object has it is not checked.
    void SetID(unsigned int id) { m_nID = id; }

    /// The value of a named attribute, empty when there is none and for a null key. Throws std::bad_alloc
    /// when memory is refused.
    CString GetKey(const char* key) const;
    /// Sets an attribute, replacing the value before; both texts are copied. A null key is ignored, a null
    /// value is the empty one. Throws std::bad_alloc when memory is refused or the attributes of the object
    /// would take more than 4 GiB, and the value is as before.
    void SetKey(const char* key, const char* value);

    /// The machining processes of the object, owned by it: what is taken off the list is the taker's to
    /// delete. The list is made when it is first asked for here, and stays where it is as long as the object;
    /// throws std::bad_alloc when memory is refused for it. Who only reads asks a constant object.
    std::list<CTechnics*>& GetTechnicsList();
    /// The machining processes of a constant object, in the order in which they were added. While no list has
    /// been made for the object this is an empty one that all objects share and that does not grow with it.
    const std::list<CTechnics*>& GetTechnicsList() const;
    /// Takes ownership of a technics and appends it; null is ignored. When memory is refused it deletes the
    /// technics and throws std::bad_alloc.
    void AddTechnics(CTechnics* technics);
    /// Sets the technics' text form, whatever the list holds; null sets the empty text. Throws std::bad_alloc
    /// when memory is refused, and the text before stays.
    void SetTechnicsString(const char* text);
    /// The technics' text form, as it was set last: it does not follow the list. Throws std::bad_alloc when
    /// memory is refused.
    CString GetTechnicsString() const;

    /// The tool paths that were generated for the object, owned by it: what is taken off the list is the
    /// taker's to delete. The list is made when it is first asked for here, and stays where it is as long as
    /// the object; throws std::bad_alloc when memory is refused for it. Who only reads asks a constant
    /// object.
    std::list<CCadObject*>& GetToolPathList();
    /// The tool paths of a constant object, in the order in which they were added. While no list has been
    /// made for the object this is an empty one that all objects share and that does not grow with it.
    const std::list<CCadObject*>& GetToolPathList() const;
    /// The box round all tool paths and what is below them; the empty box when there are none. Throws
    /// std::bad_alloc when memory is refused.
    CadRect GetToolPathBoundRect() const;

    /// The one inner object, which stays this object's; null when there is none.
    CCadObject* GetInnerObject() const { return m_pInner.get(); }
    /// Takes ownership of an inner object and deletes the one before. Null only deletes. The object itself
    /// and the inner object that it has already are ignored.
    void SetInnerObject(CCadObject* inner);
    /// Deletes the inner object, if there is one.
    void ClearInnerObject() { m_pInner.reset(); }

    // Marks and a number of the host's own. The library only keeps and clones them.

    bool IsSelected() const { return m_bSelected; }                 ///< what Select set; false at first
    void Select(bool selected) { m_bSelected = selected; }          ///< sets IsSelected, nothing else
    bool IsFilled() const { return m_bFilled; }                     ///< what Fill set; false at first
    void Fill(bool filled) { m_bFilled = filled; }                  ///< sets IsFilled, nothing else
    bool IsMachining() const { return m_bMachining; }               ///< what SetMachining set; false at first
    void SetMachining(bool machining) { m_bMachining = machining; } ///< sets IsMachining, nothing else
    /// What SetOverturned and Overturn left; false at first.
    bool IsOverturned() const { return m_bOverturned; }
    /// Sets IsOverturned; the outline stays as it is.
    void SetOverturned(bool overturned) { m_bOverturned = overturned; }
    /// Toggles the overturned flag.
    void Overturn() { m_bOverturned = !m_bOverturned; }
    int GetParamIndex() const { return m_nParamIndex; }      ///< what SetParamIndex set; 0 at first
    void SetParamIndex(int index) { m_nParamIndex = index; } ///< any number, unchecked

protected:
    /// With a fresh id from the process-wide counter (which starts at 1), or with the id 0.
    explicit CCadObject(bool newId = true);
    /// Copies what Clone copies, the id included.
    CCadObject(const CCadObject& other);

    /// Completes a clone: gives it a fresh id if one is wanted.
    static CCadObject* Cloned(CCadObject* copy, bool newId);

    /// Objects that are about to be deleted, in a row that needs no memory of its own.
    class Doomed {
    public:
        /// Appends an object; null, and one that is doomed already, are ignored.
        void Add(CCadObject* object);

    private:
        friend class CCadObject;
        CCadObject* m_pFirst = nullptr;
        CCadObject* m_pLast = nullptr;
    };
    /// Hands over what the object owns, to be deleted after it: its tool paths and its inner object. A
    /// container overrides it, hands over its members too, and calls DeleteOwned in its destructor.
    virtual void HandOver(Doomed& doomed);
    /// Deletes all that the object owns and what that owns in turn, each once and without recursion: no depth
    /// exhausts the stack, and an object that holds itself or what holds it ends well.
    void DeleteOwned();

private:
    friend class ContourIndex; // sets and reads what a polyline keeps
    // Copies the inner object, and what that owns in turn, without recursion.
    void CloneInner(const CCadObject& other);

    // The value of an attribute, null when there is none.
    const char* FindKey(const char* key) const;

    // Machining, which few objects have.
    struct Machining;
    Machining& MadeMachining();

    std::unique_ptr<Machining> m_pMachining; // null until it is needed
    std::unique_ptr<CCadObject> m_pInner;
    std::unique_ptr<char[]> m_pKeys; // each key and its value, with their NULs
    CCadObject* m_pNextDoomed = nullptr;
    std::uint32_t m_nKeysSize = 0; // bytes at m_pKeys
    unsigned int m_nID = 0;
    int m_nParamIndex = 0;
    bool m_bSelected : 1 = false;
    bool m_bFilled : 1 = false;
    bool m_bMachining : 1 = false;
    bool m_bOverturned : 1 = false;
    bool m_bDoomed : 1 = false;
    // Whether the object is a polyline that keeps its box, or its index. They stand here so that a search
    // learns it of any object without a call.
    mutable std::atomic<bool> m_bKeepsBox = false;
    mutable std::atomic<bool> m_bKeepsIndex = false;
};

/// Whether an outline that has pieces ends within math::kOnCurve of where it starts: the closedness of every
/// contour that is not closed by its kind.
QEVDATA_API bool EndsMeet(const CCadObject& contour);

} // namespace qev
