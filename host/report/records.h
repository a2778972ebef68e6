/// \file
/// What is told of a drawing as data that programs read: JSON and CSV. Keys of lengths, areas and times end
/// in their unit, as "length_mm"; numbers are exact, with a point whatever the locale.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "host/path/cutting_plan.h"
#include "report.h"

namespace host {

/// One drawing and what became of it. Nothing that it points to is its own; what is null is left out.
struct Record {
    std::string name;                                   ///< of the drawing's file
    const char* result = "";                            ///< "whole", "in part" or "refused"
    std::vector<std::string> errors;                    ///< what is wrong with it, one line each
    std::vector<std::string> remarks;                   ///< what is odd but lost nothing, one line each
    const Drawing* drawing = nullptr;                   ///< null when it was refused
    const std::vector<ObjectReport>* reports = nullptr; ///< of its objects; null when it was refused
    const CuttingPlan* plan = nullptr;                  ///< of the drawing; null when none was asked for
};

/// Writes one line with a JSON object: the drawing, its unit, what was left out, what its objects come to,
/// and the objects, with the fields of the table each. Bytes that are no UTF-8 become U+FFFD. An interrupt
/// waits until the line is whole.
void WriteJson(std::ostream& out, const Record& record);

/// Writes the line with the names of the columns, which stands once before all drawings; those of a cutting
/// plan when there are plans.
void WriteCsvHead(std::ostream& out, bool hasPlans);

/// Writes a line for each object of a drawing: the drawing, and then what the tables show. Texts are written
/// as they are, in quotes where they need them. An interrupt waits until the last line is whole.
void WriteCsv(std::ostream& out, const Record& record);

} // namespace host
