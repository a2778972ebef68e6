// soak SECONDS PLUGIN: works on a large drawing, on one cursor, on technics texts and with a plug-in that
// comes and goes beside threads that use technics, round after round. What the drawing answers is compared
// with a plain model of it, and the resident memory after the first rounds with that after the last.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <qev/qev.h>

#include <gp_Trsf2d.hxx>
#include <gp_Vec2d.hxx>
#include <lua.hpp>
#include <unistd.h>

#include "technics/test_operator.h"

namespace {

using math::DPOINT2;

constexpr int kObjects = 100'000;
constexpr double kExtent = 20'000; // mm; the squares stand in a square of this size
// MB. The allocator's own, which grows by fragments; a leak of 8 bytes for each call is more within minutes.
constexpr double kGrowth = 16;

[[noreturn]] void Fail(const std::string& what) {
    std::fprintf(stderr, "soak: %s\n", what.c_str());
    std::_Exit(1); // other threads may be at work
}

double ResidentMegabytes() {
    long pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / (1 << 20);
}

std::mt19937_64 g_random(20260101);

double Uniform(double low, double high) {
    return std::uniform_real_distribution(low, high)(g_random);
}

// Squares in a group with an index, and beside them what they are: a corner, a size and a name.
class Document {
public:
    Document() {
        for (int i = 0; i < kObjects; ++i) Append();
        m_index.Build();
    }

    void Work(int steps) {
        for (int step = 0; step < steps; ++step) {
            const auto i = static_cast<std::size_t>(Uniform(0, static_cast<double>(m_squares.size())));
            switch (static_cast<int>(Uniform(0, 8))) {
            case 0:
                Move(i);
                break;
            case 1:
                Name(i);
                break;
            case 2:
                Turn(i);
                break;
            case 3:
                CompareLength(i);
                break;
            case 4:
                CompareBox();
                break;
            default:
                ComparePick();
                break;
            }
        }
        Replace();
        if (m_group.GetNumOfChild() != static_cast<int>(m_squares.size())) Fail("the group has lost members");
    }

private:
    struct Square {
        qev::CCadPolyline* object;
        double x, y, size;
        std::string name;
        // Of a point from the outline.
        double Distance(const DPOINT2& p) const {
            const double dx = std::abs(p.x - x - size / 2) - size / 2,
                         dy = std::abs(p.y - y - size / 2) - size / 2;
            return dx < 0 && dy < 0 ? -std::max(dx, dy) : std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
        }
    };

    void Append() {
        Square square{new qev::CCadPolyline, Uniform(0, kExtent), Uniform(0, kExtent), Uniform(1, 40), ""};
        const auto& [object, x, y, size, name] = square;
        m_group.PushBack(object);
        object->SetStartPoint({x, y});
        for (const DPOINT2& p : {DPOINT2{x + size, y}, {x + size, y + size}, {x, y + size}, {x, y}})
            object->AddLine(p);
        m_squares.push_back(std::move(square));
        // what an object keeps once it is named or asked is kept from the beginning
        Name(m_squares.size() - 1);
        CompareLength(m_squares.size() - 1);
    }
    // The last hundred go, and others come.
    void Replace() {
        for (int i = 0; i < 100; ++i) {
            m_group.PopBack();
            delete m_squares.back().object;
            m_squares.pop_back();
        }
        for (int i = 0; i < 100; ++i) Append();
        m_index.Build();
    }
    void Move(std::size_t i) {
        Square& square = m_squares[i];
        gp_Trsf2d shift;
        shift.SetTranslation({Uniform(0, kExtent) - square.x, Uniform(0, kExtent) - square.y});
        square.object->ApplyTransform(shift);
        const DPOINT2 start = square.object->GetBoundRect().width > 0
                                  ? DPOINT2{square.object->GetBoundRect().x, square.object->GetBoundRect().y}
                                  : math::NoPoint();
        square.x = start.x; // as it was rounded
        square.y = start.y;
        m_index.Update(square.object);
    }
    void Name(std::size_t i) {
        Square& square = m_squares[i];
        if (square.object->GetKey("Name") != square.name.c_str()) Fail("a name differs");
        square.name = "Square " + std::to_string(g_random() % 1'000'000);
        square.object->SetKey("Name", square.name.c_str());
    }
    void Turn(std::size_t i) {
        const auto before = qev::GetContourDirectionEx(m_squares[i].object);
        m_squares[i].object->ReverseDir(true);
        if (qev::GetContourDirectionEx(m_squares[i].object) == before) Fail("a direction stays");
    }
    void CompareLength(std::size_t i) {
        const Square& square = m_squares[i];
        if (std::abs(square.object->GetLength() - 4 * square.size) > 1e-7) Fail("a length differs");
        math::POLYPOS pos;
        const int laps = qev::GetPosByOffset(square.object, {1, 0.25}, 8.5 * square.size, pos);
        if (laps != 2 || pos.nSegIndex != 1 || std::abs(pos.dRatio - 0.75) > 1e-7) Fail("a walk differs");
    }
    void CompareBox() {
        const qev::CadRect box{Uniform(0, kExtent), Uniform(0, kExtent), Uniform(0, 500), Uniform(0, 500)};
        m_found.clear();
        m_index.Collect(box, m_found);
        const auto meets = [&](const Square& s) {
            return s.x <= box.x + box.width && s.x + s.size >= box.x && s.y <= box.y + box.height
                   && s.y + s.size >= box.y;
        };
        const auto expected = std::count_if(m_squares.begin(), m_squares.end(), meets);
        if (std::abs(expected - static_cast<long>(m_found.size())) > 0) Fail("a box holds others");
    }
    void ComparePick() {
        const DPOINT2 p{Uniform(0, kExtent), Uniform(0, kExtent)};
        double least = 1e300;
        for (const Square& square : m_squares) least = std::min(least, square.Distance(p));
        DPOINT2 point = math::NoPoint();
        const qev::CCadObject* hit = m_index.Hit(p, 1e6, &point);
        if (!hit || std::abs(math::D2GetDistance(p, point) - least) > 1e-6) Fail("a pick differs");
    }

    qev::CCadGroup m_group;
    std::vector<Square> m_squares;
    std::vector<qev::CCadObject*> m_found;
    qev::CGroupIndex m_index{&m_group};
};

// One cursor, called again and again.
class Cursor {
public:
    Cursor() { m_engine.DoString("function f(a, t) n = (n or 0) + a return n, t.x end T = { Speed = 7 }"); }
    void Work(int calls) {
        qev::CLuaAccess& access = *m_engine.GetLuaAccess();
        for (int i = 0; i < calls; ++i) {
            double sum = 0, x = 0;
            access.StartCall(nullptr, "f", 2);
            access.Push(1);
            access.PushTable();
            access.Write(0.5 * i, "x");
            access.PushTableLeave();
            access.EndCall();
            lua_State* L = m_engine.GetLuaState();
            sum = lua_tonumber(L, -2);
            x = lua_tonumber(L, -1);
            lua_pop(L, 2);
            if (sum != ++m_calls || x != 0.5 * i) Fail("a call differs");
        }
        if (lua_gettop(m_engine.GetLuaState()) > 1) Fail("the stack has grown");
    }
    double Calls() const { return m_calls; }

private:
    qev::CLuaScriptEngine m_engine;
    double m_calls = 0;
};

void WriteLead(std::ostream& out) {
    out << "Lead={Depth=1},";
}

struct Manager : test::TestManager {
    explicit Manager(bool dataOnly) {
        RegisterTechnicsItem(&lead);
        SetDataOnly(dataOnly);
        lead.onCreate = [this](qev::CLuaAccess& cursor) {
            cursor.Read(read, "Depth", 0, 1e9);
            return new test::Writing(WriteLead);
        };
    }
    // Texts of which nearly none comes twice.
    void Work(int texts) {
        for (int i = 0; i < texts; ++i, ++loaded) {
            qev::CCadGroup object;
            object.SetTechnicsString(("T={Lead={Depth=" + std::to_string(loaded) + "}}").c_str());
            LoadTechnics(&object);
            if (read != loaded) Fail("a technics text differs");
            if (i % 16 == 0) SaveTechnics(&object);
        }
    }
    test::TestOperator lead{1, "Lead"};
    double read = -1;
    int loaded = 0;
};

// Four threads load technics with one manager while another one's plug-in is loaded and unloaded.
void LoadAndUnload(const std::string& plugIn, int cycles) {
    test::TestManager host;
    Manager shared(false);
    std::atomic<bool> isOver = false;
    std::vector<std::thread> users;
    constexpr int kUsers = 4;
    users.reserve(kUsers);
    for (int i = 0; i < kUsers; ++i)
        users.emplace_back([&] {
            while (!isOver) {
                qev::CCadGroup object;
                object.SetTechnicsString("T={Lead={Depth=3}}");
                shared.LoadTechnics(&object);
                if (object.GetTechnicsList().size() != 1) Fail("technics are not loaded beside plug-ins");
            }
        });
    for (int i = 0; i < cycles; ++i) {
        if (!host.LoadTechnicsPlugIn(plugIn)) Fail(host.GetLastErrorText());
        host.FreeTechnicsPlugIn();
    }
    isOver = true;
    for (std::thread& user : users) user.join();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) Fail("usage: qev_soak SECONDS PLUGIN");
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::seconds(std::atoi(argv[1]));
    constexpr int kSteps = 500, kLoads = 50;
    constexpr int kWarmUp = 5; // rounds until what is kept for reuse is there
    Document document;
    Cursor cursor;
    Manager plain(false), data(true);
    double before = 0;
    int round = 0;
    for (; Clock::now() < end || round < 2 * kWarmUp; ++round) {
        document.Work(kSteps);
        cursor.Work(50'000);
        plain.Work(5'000);
        data.Work(5'000);
        LoadAndUnload(argv[2], kLoads);
        if (round == kWarmUp) before = ResidentMegabytes();
        if (round % 10 == 0)
            std::printf("round %d: %.1f MB\n", round, ResidentMegabytes()), std::fflush(stdout);
    }
    const double after = ResidentMegabytes();
    std::printf("%d rounds: %d steps on %d objects, %.0f calls, %d texts, %d loads: %.1f MB, then %.1f MB\n",
                round, round * kSteps, kObjects, cursor.Calls(), plain.loaded + data.loaded, round * kLoads,
                before, after);
    if (after - before > kGrowth) Fail("the memory grows");
}
