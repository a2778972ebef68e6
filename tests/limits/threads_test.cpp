// What several threads may ask of one object at the same time, asked for the first time by eight of them. The
// thread sanitizer sees what the answers do not show.
#include <atomic>
#include <thread>

#include "support/support.h"
#include "technics/test_operator.h"

using namespace qev;
using namespace test;

namespace {

struct Manager : TestManager {
    Manager() { RegisterTechnicsItem(&lead); }
    TestOperator lead{1, "Lead"};
};

std::unique_ptr<CCadPolylineEx> RandomBeziers(Random& random) {
    auto contour = std::make_unique<CCadPolylineEx>();
    for (int i = 0; i < 150; ++i) contour->AddBezier(random.Point(), random.Point(), random.Point());
    return contour;
}

// Objects of which nobody has asked anything yet.
struct Drawing {
    explicit Drawing(Random& random)
        : polyline(RandomPolyline(random, 150)), extended(RandomBeziers(random)),
          set(polyline.get(), {{random.Pos(20), random.Pos(20)}}),
          topo(CTopoMultiPolyline::CreateTopoMultiPolyline(polyline.get())) {
        for (int i = 0; i < 20; ++i)
            Fill(group,
                 {RandomPolyline(random, 60).release(), TextOf(new CCadEllipse(random.Point(), 30, 5, 1))});
        index.Build();
        manager.lead.onAdd = [](CLuaAccess& cursor) { return cursor.Enter("Tool"); };
        manager.lead.onCreate = [](CLuaAccess&) { return new CTechnics; };
    }
    const std::unique_ptr<CCadPolyline> polyline;
    const std::unique_ptr<CCadPolylineEx> extended;
    const CCadEllipse ellipse{{1, 2}, 50, 20, 1};
    CCadGroup group;
    CGroupIndex index{&group};
    const CRangeSet set;
    const std::unique_ptr<const CTopoMultiPolyline> topo;
    Manager manager;
};

double LoadAndAdd(Manager& manager) {
    CCadGroup object; // of this thread alone
    object.SetTechnicsString("T={Lead={Depth=1}}");
    manager.LoadTechnics(&object);
    std::string message;
    const Objects objects{&object};
    const bool added =
        manager.AddTechnics(&objects, "T={Lead={Tool={}}}", "MouseSegment=1;", nullptr, nullptr, message);
    return static_cast<double>(object.GetTechnicsList().size()) + added;
}

std::vector<double> Ask(Drawing& drawing) {
    std::vector<double> answers{LoadAndAdd(drawing.manager)};
    for (const CCadObject* contour : {static_cast<const CCadObject*>(drawing.polyline.get()),
                                      static_cast<const CCadObject*>(drawing.extended.get()),
                                      static_cast<const CCadObject*>(&drawing.ellipse)}) {
        DPOINT2 nearest, p{0, 0};
        POLYPOS end{0, 0};
        PosToCoor(contour, 0, 0.3, p);
        answers.insert(answers.end(),
                       {contour->GetLength(), contour->GetBoundRect().width, contour->IsClose() ? 1.0 : 0,
                        GetMinDistance(contour, {300, 20}, nearest), nearest.x, p.x,
                        1.0 * GetPosByOffset(contour, {0, 0.5}, 70, end), PolyPosToDouble(end)});
    }
    const std::list<CCadObject*> all{&drawing.group};
    std::vector<ContourNesting> nesting;
    std::vector<PosRange> free;
    DPOINT2 hit{0, 0}, indexed{0, 0};
    GetNesting(&all, nesting);
    Hit(&drawing.group, {3, 4}, 100, &hit);
    drawing.index.Hit({3, 4}, 100, &indexed);
    drawing.set.GetFree(free);
    answers.insert(answers.end(),
                   {hit.x, indexed.x, drawing.group.GetBoundRect().width, drawing.topo->GetPoint(0, 0.5).x,
                    GetClearance(&drawing.group, drawing.polyline.get()), 1.0 * drawing.set.Holds({3, 0.5}),
                    static_cast<double>(nesting.size() + 100 * free.size())});
    return answers;
}

TEST(Threads, ReadersOfOneDrawingDoNotDisturbOneAnother) {
    constexpr int kThreads = 8;
    for (Random random; random.Rounds(60);) {
        Drawing drawing(random);
        std::vector<std::vector<double>> answers(kThreads);
        std::vector<std::thread> threads;
        std::atomic<int> waiting = kThreads;
        for (auto& answer : answers)
            threads.emplace_back([&] {
                for (--waiting; waiting > 0;) std::this_thread::yield();
                answer = Ask(drawing);
            });
        for (std::thread& thread : threads) thread.join();
        EXPECT_EQ(answers, std::vector(kThreads, Ask(drawing)));
    }
}

} // namespace
