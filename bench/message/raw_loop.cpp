#include "raw_loop.h"

void CallEach(const std::vector<RawSubscriber>& subscribers, const char* topic, int value, const char* text) {
    for (const RawSubscriber& s : subscribers) s.callback(topic, s.user, value, text);
}
