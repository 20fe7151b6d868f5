// SPDX-License-Identifier: MIT
#pragma GCC visibility push(default)
#include "zeb_utils.h"
#pragma GCC visibility pop

#include "operation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <exception>
#include <limits>
#include <map>
#include <muParser.h>
#include <optional>
#include <string>
#include <string_view>

using namespace brox;

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";
constexpr char nameChars[] = "0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isName(std::string_view text)
{
    return !text.empty() && !isDigit(text.front())
        && text.find_first_not_of(nameChars) == std::string_view::npos;
}

std::string_view trimmed(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text.remove_suffix(text.size() - (text.find_last_not_of(blanks) + 1));
    return text;
}

/** Keeps the parser's other operators, its strings and its argument lists out of the language. */
bool isAlphabet(std::string_view formula)
{
    static const std::string alphabet = std::string(blanks) + nameChars + ".+-*/()";
    return formula.find_first_not_of(alphabet) == std::string_view::npos;
}

/** Reads a number at the head of a text; unlike the parser's own reader it knows neither
 *  exponents nor locales. */
int readNumber(const char* text, int* position, double* value)
{
    if (!isDigit(text[0]) && text[0] != '.') {
        return 0;
    }
    const char* end = text + std::char_traits<char>::length(text);
    const auto [stop, error] = std::from_chars(text, end, *value, std::chars_format::fixed);
    if (error != std::errc()) {
        return 0;
    }
    *position += int(stop - text);
    return 1;
}

/** Nothing in the language turns NaN into a number again, so the whole formula has no value,
 *  which an infinite quotient would not ensure: 1 / (1 / 0). */
double divide(double a, double b)
{
    return b != 0.0 ? a / b : std::numeric_limits<double>::quiet_NaN();
}

/** Evaluates formulas of names, decimal numbers, "+", "-", "*", "/" and parentheses.
 *
 * The last formula stays compiled, so that giving its names other values costs no parsing.
 */
class Calculator
{
public:
    Calculator();

    /** Works off statements "NAME=whole number; ...; formula".
     *
     * @param result  null: the formula is only judged, and its names need no values
     * @return 0 or a Status; *result is written only with 0
     */
    int act(std::string_view text, double* result);

private:
    class Parser : public mu::ParserBase
    {
    public:
        Parser();
        void InitCharSets() override;
        void InitFun() override { }
        void InitConst() override { }
        void InitOprt() override;
    };

    struct Variable
    {
        std::string name;
        double value = 0.0;
        unsigned long long call = 0; ///< the call of act that gave the value
    };

    static double* makeVariable(const char* name, void* calculator);
    int compile(std::string_view formula);
    int assign(std::string_view statement);

    Parser mParser;
    std::deque<Variable> mVariables; ///< those of the formula; the parser knows their addresses
    std::string mFormula;
    int mStatus; ///< what compiling mFormula gave
    unsigned long long mCall = 0;
};

Calculator::Parser::Parser()
{
    AddValIdent(readNumber);
    InitCharSets();
    InitFun();
    InitConst();
    InitOprt();
    // The decimal separator is one for all parsers of a process and must differ from this one.
    SetArgSep(';');
}

void Calculator::Parser::InitCharSets()
{
    DefineNameChars(nameChars);
    DefineOprtChars("+-*/");
    DefineInfixOprtChars("+-");
}

void Calculator::Parser::InitOprt()
{
    EnableBuiltInOprt(false);
    using Binary = double (*)(double, double);
    const auto define = [this](const char* name, int priority, Binary function) {
        DefineOprt(name, function, unsigned(priority), mu::oaLEFT, true);
    };
    DefineInfixOprt("+", [](double a) { return a; });
    DefineInfixOprt("-", [](double a) { return -a; });
    define("+", mu::prADD_SUB, [](double a, double b) { return a + b; });
    define("-", mu::prADD_SUB, [](double a, double b) { return a - b; });
    define("*", mu::prMUL_DIV, [](double a, double b) { return a * b; });
    define("/", mu::prMUL_DIV, divide);
}

Calculator::Calculator()
    : mStatus(NoFormula)
{
    mParser.SetVarFactory(makeVariable, this);
}

double* Calculator::makeVariable(const char* name, void* calculator)
{
    return &static_cast<Calculator*>(calculator)->mVariables.emplace_back(Variable{name}).value;
}

int Calculator::compile(std::string_view formula)
{
    if (formula == mFormula) {
        return mStatus;
    }
    mStatus = NoFormula;
    mFormula = formula;
    mParser.ClearVar();
    mVariables.clear();
    if (!isAlphabet(formula) || trimmed(formula).empty()) {
        return mStatus;
    }
    try {
        mParser.SetExpr(mFormula);
        mParser.Eval();
        mStatus = 0;
    } catch (const mu::ParserError&) { } // stays NoFormula
    return mStatus;
}

int Calculator::assign(std::string_view statement)
{
    const size_t equals = std::min(statement.find('='), statement.size());
    const std::string_view name = trimmed(statement.substr(0, equals));
    const std::string_view number =
        trimmed(statement.substr(std::min(equals + 1, statement.size())));
    long long value = 0;
    const char* end = number.data() + number.size();
    const auto [stop, error] = std::from_chars(number.data(), end, value);
    if (!isName(name) || error != std::errc() || stop != end) {
        return NoFormula;
    }
    const auto isNamed = [name](const Variable& variable) { return variable.name == name; };
    const auto it = std::find_if(mVariables.begin(), mVariables.end(), isNamed);
    if (it != mVariables.end()) {
        it->value = double(value);
        it->call = mCall;
    }
    return 0;
}

int Calculator::act(std::string_view text, double* result)
{
    ++mCall;
    const size_t formulaAt = text.rfind(';') + 1; // npos + 1 is 0
    if (const int status = compile(text.substr(formulaAt))) {
        return status;
    }
    for (size_t at = 0; at < formulaAt;) {
        const size_t end = text.find(';', at);
        if (const int status = assign(text.substr(at, end - at))) {
            return status;
        }
        at = end + 1;
    }
    if (!result) {
        return 0;
    }
    const auto hasValue = [this](const Variable& variable) { return variable.call == mCall; };
    if (!std::all_of(mVariables.begin(), mVariables.end(), hasValue)) {
        return NoNameValue;
    }
    const double value = mParser.Eval();
    if (!std::isfinite(value)) {
        return NoFiniteValue;
    }
    *result = value;
    return 0;
}

const Operation bcAct("zeb__bc_act");
Calculator calculator;
std::optional<double> lastValue;

/** Messages that were given out; callers may keep the pointers. */
std::map<int, std::string> messages;

std::string messageOf(int status)
{
    switch (status) {
#define OPERATION_STATUS(name, number, text)                                                       \
    case name:                                                                                     \
        return text;
        OPERATION_STATUSES(OPERATION_STATUS)
#undef OPERATION_STATUS
    }
    return "An operation failed with status " + std::to_string(status) + ".";
}

} // namespace

int zeb__bc_act(const char* text, bool, int, double* result)
{
    lastValue.reset();
    if (const int status = bcAct.enter()) {
        return status;
    }
    if (!text) {
        return BadArgument;
    }
    try {
        const int status = calculator.act(text, result);
        if (status == 0 && result) {
            lastValue = *result;
        }
        return status;
    } catch (const std::exception&) {
        return OutOfMemory;
    }
}

bool standin_last_value(double* value)
{
    if (lastValue) {
        *value = *lastValue;
    }
    return lastValue.has_value();
}

InternalException::InternalException(int status)
    : mStatus(status)
{ }

char* InternalException::getMessage() const
{
    std::string& message = messages[mStatus];
    if (message.empty()) {
        message = messageOf(mStatus);
    }
    return message.data();
}

char* InternalException::getDefaultMsg()
{
    static char message[] = "An unexpected error occurred.";
    return message;
}
