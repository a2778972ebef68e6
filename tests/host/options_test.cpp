#include "host/options.h"
#include "host/run_host.h"

using namespace test;

TEST(Options, RefusalsNameTheOptionAndWhatItTakes) {
    const struct {
        const char *line, *why;
    } cases[] = {
        {"", "no drawing is named"},
        {"a b", "only one drawing"},
        {"a --what", "there is no option --what"},
        {"a --svg", "--svg takes a value"},
        {"a --rows x", "--rows takes a number, not 'x'"},
        {"a --rows -1", "--rows takes a number that is not negative"},
        {"a --join nan", "--join takes a number that is not negative"},
        {"a --cut 1:2", "--cut takes OBJECT:FROM:TO"},
        {"a --pick 1,2,3", "--pick takes X,Y"},
        {"a --walk 1:0.5x:2", "--walk takes a number, not '0.5x'"},
    };
    for (const auto& expected : cases) try {
            RunHost(expected.line);
            ADD_FAILURE() << "accepted: " << expected.line;
        } catch (const host::UsageError& error) {
            ExpectContains(error.what(), {expected.why});
        }
}
