// A column is a key, what its unit is the square or the simple of, and where its value comes from; both forms
// go over the same list. Objects are written one by one, because a document of a million of them takes
// gigabytes as a tree.

#include "records.h"

#include <array>
#include <ostream>
#include <utility>

#include <nlohmann/json.hpp>

#include "platform/held_interrupts.h"
#include "print.h"

namespace host {
namespace {

using nlohmann::ordered_json;

// One object and where it stands.
struct Row {
    int number;
    const ObjectReport& report;
    const Cut* cut; // null when it is not cut
};

enum class Unit { kNone, kLength, kArea };

struct Column {
    const char* name;
    Unit unit;
    ordered_json (*value)(const Row&); // null where the table leaves the place empty
};

ordered_json Area(const Row& row) {
    return row.report.area > 0 ? ordered_json(ShownArea(row.report.area)) : ordered_json();
}

ordered_json Direction(const Row& row) {
    return row.report.direction > 0 ? ordered_json(DirectionName(row.report.direction)) : ordered_json();
}

constexpr std::array kColumns{
    Column{"object", Unit::kNone, [](const Row& row) { return ordered_json(row.number); }},
    Column{"kind", Unit::kNone,
           [](const Row& row) { return ordered_json(KindName(row.report.object->GetType())); }},
    Column{"layer", Unit::kNone, [](const Row& row) { return ordered_json(LayerOf(*row.report.object)); }},
    Column{"segments", Unit::kNone, [](const Row& row) { return ordered_json(row.report.segments); }},
    Column{"length", Unit::kLength,
           [](const Row& row) { return ordered_json(ShownLength(row.report.length)); }},
    Column{"closed", Unit::kNone, [](const Row& row) { return ordered_json(row.report.closed == 1); }},
    Column{"direction", Unit::kNone, Direction},
    Column{"area", Unit::kArea, Area},
    Column{"corners", Unit::kNone, [](const Row& row) { return ordered_json(row.report.corners.size()); }},
};

// What a plan adds. Its columns are null for an object that is not cut.
constexpr std::array kPlanColumns{
    Column{"cut_number", Unit::kNone, [](const Row& row) { return ordered_json(row.cut->number); }},
    Column{"rapid", Unit::kLength, [](const Row& row) { return ordered_json(ShownLength(row.cut->rapid)); }},
    Column{"cut", Unit::kLength, [](const Row& row) { return ordered_json(ShownLength(row.cut->length)); }},
    Column{"pierces", Unit::kNone, [](const Row& row) { return ordered_json(row.cut->pierces); }},
    Column{"time_s", Unit::kNone, [](const Row& row) { return ordered_json(row.cut->seconds); }},
};

// A name with the unit that its values are shown in.
std::string Key(const char* name, Unit unit = Unit::kLength) {
    if (unit == Unit::kNone) return name;
    return std::string(name) + "_" + UnitName() + (unit == Unit::kArea ? "2" : "");
}

std::string TextOf(const ordered_json& value) {
    return value.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

// Hands the name and the value of each column of a row over.
template <class Take>
void ForEachField(const Row& row, bool hasPlan, Take take) {
    for (const Column& column : kColumns) take(Key(column.name, column.unit), column.value(row));
    if (!hasPlan) return;
    for (const Column& column : kPlanColumns)
        take(Key(column.name, column.unit), row.cut ? column.value(row) : ordered_json());
}

// Hands the rows of a record over.
template <class Take>
void ForEachRow(const Record& record, Take take) {
    std::vector<const Cut*> cuts(record.reports->size());
    if (record.plan)
        for (const Cut& cut : record.plan->cuts) cuts[cut.object] = &cut;
    for (std::size_t i = 0; i < cuts.size(); ++i)
        take(Row{static_cast<int>(i), (*record.reports)[i], cuts[i]});
}

ordered_json TotalsOf(const CuttingPlan& plan) {
    return {{"feed_mm_per_min", plan.speeds.feed},
            {"rapid_mm_per_min", plan.speeds.rapid},
            {"pierce_s", plan.speeds.pierce},
            {"cuts", plan.cuts.size()},
            {"not_cut", plan.uncut},
            {Key("cut"), ShownLength(plan.length)},
            {Key("rapid"), ShownLength(plan.rapid)},
            {"pierces", plan.pierces},
            {"time_s", plan.seconds}};
}

ordered_json Corner(const math::DPOINT2& p) {
    return {ShownLength(p.x), ShownLength(p.y)};
}

// What stands before the objects.
ordered_json HeadOf(const Record& record) {
    ordered_json head{{"drawing", record.name}, {"result", record.result}, {"errors", record.errors}};
    if (!record.drawing) return head;
    head["remarks"] = record.remarks;
    const DrawingUnit& unit = record.drawing->unit;
    const Summary sum = SummaryOf(*record.drawing, *record.reports);
    head["file_unit"] = {{"name", unit.name}, {"mm", unit.millimetres}, {"source", SourceName(unit.source)}};
    for (const ReadCountRow& row : kReadCounts) head["counts"][row.key] = record.drawing->counts.*row.count;
    for (const auto& [name, layer] : record.drawing->layers)
        head["layers"][name] = {
            {"colour", layer.colour}, {"shown", layer.isShown}, {"entities", layer.entities}};
    head["not_drawn"] = record.drawing->skipped;
    head["kinds"] = sum.kinds;
    head["closed"] = sum.closed;
    head["corners"] = sum.corners;
    head[Key("length")] = ShownLength(sum.length);
    head[Key("low")] = Corner(sum.low);
    head[Key("high")] = Corner(sum.high);
    if (record.plan) head["plan"] = TotalsOf(*record.plan);
    return head;
}

// A field of a line: in quotes when it holds what ends one.
std::string Quoted(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted(1, '"');
    for (const char c : text) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string Field(const ordered_json& value) {
    if (value.is_null()) return {};
    return value.is_string() ? Quoted(value.get_ref<const std::string&>()) : TextOf(value);
}

} // namespace

void WriteJson(std::ostream& out, const Record& record) {
    const qev::platform::HeldInterrupts held;
    std::string head = TextOf(HeadOf(record));
    head.pop_back(); // the brace, which comes after the objects
    out << head;
    if (record.reports) {
        out << ",\"objects\":[";
        ForEachRow(record, [&](const Row& row) {
            ordered_json fields;
            ForEachField(row, record.plan,
                         [&](const std::string& key, ordered_json value) { fields[key] = std::move(value); });
            out << (row.number > 0 ? "," : "") << TextOf(fields);
        });
        out << "]";
    }
    out << "}" << std::endl;
}

void WriteCsvHead(std::ostream& out, bool hasPlans) {
    out << "drawing";
    for (const Column& column : kColumns) out << "," << Key(column.name, column.unit);
    if (hasPlans)
        for (const Column& column : kPlanColumns) out << "," << Key(column.name, column.unit);
    out << "\n";
}

void WriteCsv(std::ostream& out, const Record& record) {
    if (!record.reports) return;
    const qev::platform::HeldInterrupts held;
    ForEachRow(record, [&](const Row& row) {
        out << Quoted(record.name);
        ForEachField(row, record.plan,
                     [&](const std::string&, const ordered_json& value) { out << "," << Field(value); });
        out << "\n";
    });
    out.flush();
}

} // namespace host
