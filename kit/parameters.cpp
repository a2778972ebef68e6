// Parameters of a technics: reading, writing, and what is said of a wrong one.
//
// The table that a user wrote is gone over key by key, and not parameter by parameter: so a key that nobody
// asks for is seen. It is compared with the keys there are by the number of letters that would have to be
// typed otherwise (changed, left out, added, or exchanged with the next one, the four slips of a hand); the
// nearest is proposed if no more than one letter in three is wrong. More tolerance proposes nonsense.
//
// A number reads back equal because its shortest text is the one that to_chars writes; a text because every
// character that Lua could take for something else is written as its code.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <ostream>

#include <qevtechnics/parameters.h>

namespace qev::kit {
namespace {

constexpr std::array kMouseKeys = {"MouseSegment", "MouseRatio", "StartX", "StartY"}; // the manager's

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

// False for what is no number as well.
bool IsAllowed(const ParameterRule& rule, double value) {
    return rule.min <= value && value <= rule.max;
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// How many slips of a hand lie between two keys; capitals count as small letters.
std::size_t SlipsBetween(const std::string& a, const std::string& b) {
    std::vector<std::size_t> beforeLast, last, now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) now[j] = j;
    const auto isSame = [&](std::size_t i, std::size_t j) { return Lower(a[i - 1]) == Lower(b[j - 1]); };
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast = std::exchange(last, now);
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, last[j - 1] + !isSame(i, j)});
            const bool areExchanged = i > 1 && j > 1 && isSame(i, j - 1) && isSame(i - 1, j);
            if (areExchanged) now[j] = std::min(now[j], beforeLast[j - 2] + 1);
        }
    }
    return now.back();
}

// What is said of a key that no parameter has.
std::string UnknownKey(const std::string& key, const std::vector<ParameterOf>& parameters) {
    const char* nearest = nullptr;
    std::size_t least = key.size() / 3 + 1; // more slips than this are another word
    std::string all;
    for (const ParameterOf& each : parameters) {
        const std::size_t slips = SlipsBetween(key, each.rule->key);
        if (slips < least) nearest = each.rule->key;
        least = std::min(least, slips);
        all += (all.empty() ? "" : ", ") + std::string(each.rule->key);
    }
    return nearest ? std::string("is no parameter; did you mean ") + nearest + "?"
                   : "is no parameter; there are " + all;
}

// Reads a value under the parameter's key. False when it is of another type or not allowed.
bool ReadValue(CLuaAccess& cursor, const ParameterRule& rule, double& value) {
    constexpr double kAny = std::numeric_limits<double>::infinity();
    double read = 0;
    if (!cursor.Read(read, rule.key, -kAny, kAny) || !IsAllowed(rule, read)) return false;
    value = read;
    return true;
}

bool ReadText(CLuaAccess& cursor, const ParameterRule& rule, std::size_t longest, std::string& value) {
    std::string buffer(longest + 1, '\0');
    if (!cursor.Read(buffer.data(), buffer.size(), rule.key)) return false;
    value.assign(buffer, 0, buffer.find('\0'));
    return true;
}

bool ReadChoice(const ParameterRule& rule, const std::string& shown, int& value) {
    const auto found = std::find(rule.choices.begin(), rule.choices.end(), shown);
    if (found != rule.choices.end()) value = static_cast<int>(found - rule.choices.begin());
    return found != rule.choices.end();
}

bool ReadWhole(CLuaAccess& cursor, const ParameterRule& rule, int& value) {
    double number = 0;
    if (!ReadValue(cursor, rule, number) || number != std::floor(number)) return false;
    value = static_cast<int>(number);
    return true;
}

void ReadParameter(CLuaAccess& cursor, const ParameterOf& parameter, const std::string& shown) {
    const ParameterRule& rule = *parameter.rule;
    const bool isRead = std::visit(Overloaded{[&](double* value) { return ReadValue(cursor, rule, *value); },
                                              [&](int* value) {
                                                  return rule.choices.empty()
                                                             ? ReadWhole(cursor, rule, *value)
                                                             : ReadChoice(rule, shown, *value);
                                              },
                                              [&](bool* value) { return cursor.Read(*value, rule.key); },
                                              [&](std::string* value) {
                                                  return shown.size() <= rule.longest
                                                         && ReadText(cursor, rule, rule.longest, *value);
                                              }},
                                   parameter.value);
    if (!isRead) cursor.ErrorHandle(rule.key, shown.c_str(), ("is not " + rule.Expected()).c_str());
}

void WriteText(std::ostream& out, const std::string& text) {
    out << '"';
    for (const char c : text) {
        const bool isPlain = c >= ' ' && c < '\x7F' && c != '"' && c != '\\';
        const int code = static_cast<unsigned char>(c);
        if (isPlain)
            out << c;
        else // three digits, as the next character may be one
            out << '\\' << code / 100 << code / 10 % 10 << code % 10;
    }
    out << '"';
}

// Writes a parameter behind what stands between it and the one before; false when it is left out.
bool WriteParameter(std::ostream& out, const char* between, const ParameterOf& parameter) {
    const ParameterRule& rule = *parameter.rule;
    const auto key = [&]() -> std::ostream& { return out << between << rule.key << '='; };
    return std::visit(Overloaded{[&](const double* value) {
                                     const bool isGiven = IsAllowed(rule, *value);
                                     if (isGiven) key() << ShortestText(*value);
                                     return isGiven;
                                 },
                                 [&](const int* value) {
                                     const bool isGiven = IsAllowed(rule, *value);
                                     if (isGiven && rule.choices.empty()) key() << ShortestText(*value);
                                     if (isGiven && !rule.choices.empty())
                                         key() << '"' << rule.choices[*value] << '"';
                                     return isGiven;
                                 },
                                 [&](const bool* value) {
                                     key() << (*value ? "true" : "false");
                                     return true;
                                 },
                                 [&](const std::string* value) {
                                     WriteText(key(), *value);
                                     return true;
                                 }},
                      parameter.value);
}

} // namespace

std::string ParameterRule::Expected() const {
    std::string text = kind;
    for (const char* choice : choices)
        text += (choice == choices.front() ? " of " : ", ") + std::string(choice);
    if (longest > 0) text += " of up to " + std::to_string(longest) + " bytes";
    if (choices.empty() && min < max) text += " from " + ShortestText(min) + " to " + ShortestText(max);
    return text + (*unit ? " " : "") + unit;
}

void ReadParameters(CLuaAccess& cursor, const std::vector<ParameterOf>& parameters) {
    std::vector<CLuaAccess::FieldInfo> fields;
    cursor.CollectFields(fields);
    std::vector<std::pair<const ParameterOf*, const std::string*>> given;
    for (const CLuaAccess::FieldInfo& field : fields) {
        const auto found = std::find_if(parameters.begin(), parameters.end(), [&](const ParameterOf& each) {
            return each.rule->key == field.name;
        });
        const bool isMouse = std::find(kMouseKeys.begin(), kMouseKeys.end(), field.name) != kMouseKeys.end();
        if (found != parameters.end())
            given.emplace_back(&*found, &field.value);
        else if (!isMouse)
            cursor.ErrorHandle(field.name.c_str(), field.value.c_str(),
                               UnknownKey(field.name, parameters).c_str());
    }
    for (const auto& [parameter, value] : given) ReadParameter(cursor, *parameter, *value);
}

void WriteParameters(std::ostream& out, const char* name, const std::vector<ParameterOf>& parameters) {
    out << name << "={";
    const char* between = "";
    for (const ParameterOf& each : parameters)
        if (WriteParameter(out, between, each)) between = ",";
    out << "},";
}

std::string ShortestText(double value) {
    std::array<char, 32> digits;
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

} // namespace qev::kit
