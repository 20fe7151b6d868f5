// SPDX-License-Identifier: MIT
#include "calculator.h"

#include "operation.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace brox {

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

} // namespace

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
    const auto define = [this](const char* name, Binary function, int priority) {
        DefineOprt(name, function, unsigned(priority), mu::oaLEFT, true);
    };
    DefineInfixOprt("+", [](double a) { return a; });
    DefineInfixOprt("-", [](double a) { return -a; });
    define(
        "+", [](double a, double b) { return a + b; }, mu::prADD_SUB);
    define(
        "-", [](double a, double b) { return a - b; }, mu::prADD_SUB);
    define(
        "*", [](double a, double b) { return a * b; }, mu::prMUL_DIV);
    define("/", divide, mu::prMUL_DIV);
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
    } catch (const mu::ParserError&) {
        mStatus = NoFormula;
    }
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

} // namespace brox
