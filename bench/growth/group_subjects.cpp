#include "subject.h"
#include "support/lead.h"

namespace qev::bench {
namespace {

// What a function collects.
template <class Collect>
double CountOf(Collect collect) {
    Objects found;
    collect(&found);
    return static_cast<double>(found.size());
}

// A group that takes objects without owning them.
template <class Fill>
double TakenBy(Fill fill) {
    CCadGroup into(false);
    fill(&into);
    const double taken = into.GetNumOfChild();
    into.PickOffAll();
    return taken;
}

class Selecting : public CPosCalculator {
public:
    using CPosCalculator::_SelectClosedObject;
    using CPosCalculator::_SelectObject;
};

Manager& TheManager() {
    static Manager manager;
    return manager;
}

constexpr Kind kWhole = Kind::kWhole, kQuestion = Kind::kQuestion;

const Subject kSubjects[] = {
    // selections
    {"GetCornerPoint", kWhole, [](Input& in, int) { return Blend(GetCornerPoint(&in.members, "TL")); }},
    {"IsClose", kWhole, [](Input& in, int) { return Number(IsClose(&in.group)); }},
    {"IsAllUnClosed", kWhole, [](Input& in, int) { return Number(IsAllUnClosed(&in.members)); }},
    {"IsAllClosed", kWhole, [](Input& in, int) { return Number(IsAllClosed(&in.members)); }},
    {"IsAllDot", kWhole, [](Input& in, int) { return Number(IsAllDot(&in.members)); }},
    {"IsAllText", kWhole, [](Input& in, int) { return Number(IsAllText(&in.members)); }},
    {"IsCoEdgeGroup", kWhole, [](Input& in, int) { return Number(IsCoEdgeGroup(&in.group)); }},
    {"IsCoEdgeObject", kWhole, [](Input& in, int) { return Number(IsCoEdgeObject(&in.group)); }},
    {"IsCoEdgeObject_Tube", kWhole, [](Input& in, int) { return Number(IsCoEdgeObject_Tube(&in.group)); }},
    {"GetTextCount", kWhole, [](Input& in, int) { return Number(GetTextCount(&in.group)); }},
    {"GetTextCount of a list", kWhole, [](Input& in, int) { return Number(GetTextCount(&in.members)); }},
    {"RemoveCadByType", kWhole,
     [](Input& in, int) {
         return CountOf([&](Objects* out) { RemoveCadByType(&in.members, out, 0x1900); });
     }},
    {"RemoveCadByType by a list", kWhole,
     [](Input& in, int) {
         return CountOf([&](Objects* out) { RemoveCadByType(&in.members, out, std::list<cad_t>{kCadArc}); });
     }},
    {"CollectCloseCad", kWhole,
     [](Input& in, int) { return CountOf([&](Objects* out) { CollectCloseCad(&in.members, out); }); }},
    {"CollectLeafNode", kWhole,
     [](Input& in, int) { return CountOf([&](Objects* out) { CollectLeafNode(&in.members, out); }); }},
    {"GetNesting", kWhole,
     [](Input& in, int) {
         std::vector<ContourNesting> nesting;
         GetNesting(&in.members, nesting);
         return Number(nesting.size());
     }},
    {"CollectObject", kWhole,
     [](Input& in, int) { return TakenBy([&](CCadGroup* into) { CollectObject(&in.group, into); }); }},
    {"_SelectObject", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) { Selecting::_SelectObject(&in.group, into); });
     }},
    {"_SelectObject of a list", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) { Selecting::_SelectObject(&in.members, into); });
     }},
    {"_SelectClosedObject of a list", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) { Selecting::_SelectClosedObject(&in.members, into); });
     }},
    {"_SelectClosedObject", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) { Selecting::_SelectClosedObject(&in.group, into); });
     }},
    {"IsSameProjectContour", kWhole,
     [](Input& in, int) { return Number(CAdobeHelper::IsSameProjectContour(&in.group, &in.outlines)); }},
    // picks
    {"CGroupIndex", kWhole, [](Input& in, int) { return Number(CGroupIndex(&in.group).GetCount()); }},
    {"Build", kWhole, [](Input& in, int) { return in.index->Build(), 0.0; }},
    {"GetCount of an index", kQuestion, [](Input& in, int) { return Number(in.index->GetCount()); }},
    {"Hit on an index", kQuestion,
     [](Input& in, int i) { return in.index->Hit(in.picks[i], 2) ? 1.0 : 0.0; }},
    {"Collect", kQuestion,
     [](Input& in, int i) {
         std::vector<CCadObject*> found;
         in.index->Collect({in.picks[i].x, in.picks[i].y, 2, 2}, found);
         return Number(found.size());
     }},
    {"Update", kQuestion,
     [](Input& in, int) {
         in.index->Update(in.members.front());
         return 0.0;
     }},
    {"Hit", kWhole, [](Input& in, int i) { return Hit(&in.group, in.picks[i], 2) ? 1.0 : 0.0; }},
    {"FindCadAndPosByPoint", kWhole,
     [](Input& in, int i) {
         const CCadObject* object = nullptr;
         math::POLYPOS pos;
         return Number(FindCadAndPosByPoint(&in.group, in.picks[i], object, pos, 2));
     }},
    {"CalculatePosition", kWhole,
     [](Input& in, int i) {
         CPosCalculator calculator;
         PosInfo info;
         calculator.Init(&in.group, &in.picks[i], 2);
         return Number(calculator.CalculatePosition(&info, true));
     }},
    {"CalculatePosition by an index", kQuestion,
     [](Input& in, int i) {
         CPosCalculator calculator;
         PosInfo info;
         calculator.Init(*in.index, &in.picks[i], 2);
         return Number(calculator.CalculatePosition(&info, true));
     }},
    {"Hit among closed objects", kWhole,
     [](Input& in, int i) { return Hit(&in.group, in.picks[i], 2, true) ? 1.0 : 0.0; }},
    {"CoorToPos of a group", kWhole,
     [](Input& in, int i) {
         math::POLYPOS pos;
         return Number(CoorToPos(&in.group, in.picks[i], pos, 2));
     }},
    {"GetMinDistance of a group", kWhole,
     [](Input& in, int i) {
         DPOINT2 nearest;
         return GetMinDistance(&in.group, in.picks[i], nearest);
     }},
    // the group's own
    {"GetCadLength of a group", kWhole, [](Input& in, int) { return GetCadLength(&in.group); }},
    {"GetBoundRect of a group", kWhole, [](Input& in, int) { return in.group.GetBoundRect().width; }},
    {"Clone of a group", kWhole,
     [](Input& in, int) {
         const std::unique_ptr<CCadObject> clone(in.group.Clone(false));
         return clone->GetBoundRect().width;
     }},
    {"PushBack", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) {
             for (CCadObject* object : in.members) into->PushBack(object);
         });
     }},
    {"PopBack after PushBack", kWhole,
     [](Input& in, int) {
         CCadGroup made(false);
         for (CCadObject* object : in.members) made.PushBack(object);
         while (!made.IsEmpty()) made.PopBack();
         return 0.0;
     }},
    {"Insert in front", kWhole,
     [](Input& in, int) {
         return TakenBy([&](CCadGroup* into) {
             for (CCadObject* object : in.members) into->Insert(object, 0);
         });
     }},
    // technics
    {"HasTechnics", kWhole, [](Input& in, int) { return Number(HasTechnics(&in.laden, 1, true)); }},
    {"HasTechnics of any type", kWhole, [](Input& in, int) { return Number(HasTechnics(&in.laden)); }},
    {"HasTechnics of a sub-type", kWhole,
     [](Input& in, int) { return Number(HasTechnics(&in.laden, 1, 1)); }},
    {"GetTechnics", kWhole, [](Input& in, int) { return Number(GetTechnics(&in.laden, 1, 1) != nullptr); }},
    {"PickOffTechnics", kWhole,
     [](Input& in, int) { return Number(PickOffTechnics(&in.laden, 1) != nullptr); }},
    {"PickOffTechnics of a sub-type", kWhole,
     [](Input& in, int) { return Number(PickOffTechnics(&in.laden, 1, 1) != nullptr); }},
    {"RefreshCadObject", kWhole,
     [](Input& in, int) { return Number(RefreshCadObject(&in.laden, -1, 1, nullptr)); }},
    {"LoadTechnics", kWhole, [](Input& in, int) { return TheManager().LoadTechnics(&in.laden), 0.0; }},
    {"SaveTechnics", kWhole,
     [](Input& in, int) {
         CCadGroup carrier(false);
         carrier.GetTechnicsList().swap(in.laden.GetTechnicsList());
         TheManager().SaveTechnics(&carrier);
         carrier.GetTechnicsList().swap(in.laden.GetTechnicsList());
         return 0.0;
     }},
    {"AddTechnics", kWhole,
     [](Input& in, int) {
         Objects out1, out2;
         std::string message;
         return Number(
             TheManager().AddTechnics(&in.members, "T={Lead={Speed=12}};", "", &out1, &out2, message));
     }},
    {"AddAllTechnics", kWhole,
     [](Input& in, int) {
         Objects out1, out2;
         std::string message;
         return Number(
             TheManager().AddAllTechnics(&in.members, "T={Lead={Speed=12}};", "", &out1, &out2, message));
     }},
    {"RemoveTechnics", kWhole,
     [](Input& in, int) {
         Objects out1, out2;
         std::string message;
         return Number(TheManager().RemoveTechnics(&in.members, 1, &out1, &out2, message));
     }},
    {"SingleMudifyNotify", kWhole,
     [](Input& in, int) {
         return TheManager().SingleMudifyNotify(&in.laden, &in.laden, in.chordMap, 1), 0.0;
     }},
    {"MultipleMudifyNotify", kWhole,
     [](Input& in, int) { return TheManager().MultipleMudifyNotify(&in.members, &in.members, 1), 0.0; }},
    {"UpdataViewDataNotify", kWhole,
     [](Input& in, int) { return TheManager().UpdataViewDataNotify(&in.members), 0.0; }},
};

} // namespace

std::span<const Subject> GroupSubjects() {
    return kSubjects;
}

} // namespace qev::bench
