// Every exported function of the geometry families with 16 hostile numbers in each numeric place, alone, in
// all places together and in half of them. A build with sanitizers reports what is undefined.
#include "hostile/feed.h"
#include "platform/cpu_time.h"
#include "support/patience.h"

namespace {

using hostile::Feed, hostile::Row;

// s of computing: what a host that asks while the mouse moves does not notice.
const double kMost = 0.05 * test::Patience();

// s. What is converted may have a million pieces, and takes as long as they do.
const double kMostConverted = 20 * kMost;

struct Try {
    int variant, place, value;
};

// All tries of one row. Objects of several arguments are not all paired with one another.
std::vector<Try> TriesOf(const Row& row) {
    constexpr int kMostVariants = 40, kDrawn = 24;
    constexpr int kStep = 7; // has no factor in common with numbers of kinds, so that all kinds come
    Feed counter(Feed::kNone, 0, 0);
    row.call(counter);
    const int variants = std::max(counter.VariantCount(), 10);
    std::vector<Try> tries;
    for (int i = 0; i < std::min(variants, kMostVariants); ++i) {
        const int variant = variants > kMostVariants ? i * kStep * (variants / kMostVariants) + i : i;
        Feed ordinary(Feed::kNone, 0, variant);
        row.call(ordinary);
        for (int place = Feed::kAll; place < ordinary.PlaceCount(); ++place)
            for (int value = 0; value < Feed::kValues; ++value) tries.push_back({variant, place, value});
        for (int draw = 0; draw < kDrawn; ++draw) tries.push_back({variant, Feed::kSome, draw});
    }
    return tries;
}

void Run(const Row& row, const Try& one) {
    try {
        Feed feed(one.place, one.value, one.variant);
        row.call(feed);
    } catch (const std::exception& error) {
        ADD_FAILURE() << "throws " << error.what() << " at place " << one.place << ", value " << one.value
                      << ", variant " << one.variant;
    }
}

// Only where all tries together have taken long is each of them looked at.
void ExpectQuick(const Row& row, const std::vector<Try>& tries) {
    const double most =
        std::string_view(row.name).find("Convert") != std::string_view::npos ? kMostConverted : kMost;
    const auto secondsOf = [&](const std::vector<Try>& some) {
        const double start = qev::platform::ThreadSeconds();
        for (const Try& one : some) Run(row, one);
        return qev::platform::ThreadSeconds() - start;
    };
    if (secondsOf(tries) < most) return;
    for (const Try& one : tries)
        EXPECT_LT(secondsOf({one}), most)
            << "place " << one.place << ", value " << one.value << ", variant " << one.variant;
}

TEST(HostileNumbers, NoCallThrowsOrTakesLong) {
    constexpr std::ptrdiff_t kBatch = 500;
    for (const Row& row : hostile::Rows()) {
        SCOPED_TRACE(row.name);
        const std::vector<Try> tries = TriesOf(row);
        for (auto batch = tries.begin(); batch != tries.end();) {
            const auto end = batch + std::min(kBatch, tries.end() - batch);
            ExpectQuick(row, {batch, end});
            batch = end;
        }
    }
}

} // namespace
