/// \file
/// Technics: machining processes on CAD objects, the plug-ins that make them, and the manager over both.
///
/// The life of a technics, from text to tool path and back:
///
/// 1. The host loads plug-ins (CTechnicsManager::LoadTechnicsPlugIn). A plug-in marks its entries with
///    QEV_EXPORT (qev/export.h). It brings its operators, one for each type of technics, and keeps them as
///    long as it is loaded. Types are numbers that the plug-ins of a host share
///    out among themselves, from 1 on; the first operator of a type stays. 16 serves, besides its own, all
///    types with the bit 16 that nobody else has (16 to 31, 48 to 63, ...): take none of these for anything
///    else.
/// 2. AddTechnics runs a text, `T={LeadIn={Length=4}}`, and hands the table with the operator's name to the
///    operator, which reads the parameters with the cursor, makes a CTechnics for each object and attaches it
///    with CCadObject::AddTechnics. From then on the object owns it, and deletes it.
/// 3. The technics makes its tool paths and puts them in the object's GetToolPathList(), which owns them,
///    too. The list is shared by the technics of all plug-ins: who puts a path there remembers its address,
///    replaces and deletes only paths of its own, and says with an attribute what a path is for: "PathRole"
///    is "lead-in", "lead-out", "overlap" or "cut" (a part of the contour).
/// 4. The host calls UpdataViewDataNotify for objects whose contour or technics have changed, and each
///    operator makes its paths on them anew.
/// 5. SaveTechnics has each technics write its entry (CTechnics::Write) and sets the object's technics text:
///    "T={" entries "};". An entry is `Name={...},` with the operator's name and the comma. Paths are not
///    saved: what is written has to make them again, on the same contour, without the neighbours.
/// 6. LoadTechnics runs the object's text and calls CreateTechnics of each operator with a table in it, which
///    makes the technics and its paths; the manager attaches it. The host then calls UpdataViewDataNotify, as
///    paths of one technics may depend on those of another.
/// 7. RemoveTechnics has the operator take its technics off (PickOffTechnics, which hands it over to be
///    deleted) and delete its paths. A clone of an object carries the text, neither technics nor paths: the
///    host loads it.
///
/// The library QevTechnics (qevtechnics/qevtechnics.h) does all this for technics with tool paths; a plug-in
/// then says what its parameters are and which paths they make.
#pragma once

#include <qev/technics/load_library.h>
#include <qev/technics/manager.h>
#include <qev/technics/queries.h>
#include <qev/technics/technics_operator.h>
#include <qevdata/qevdata.h>
