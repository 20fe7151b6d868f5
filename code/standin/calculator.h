// SPDX-License-Identifier: MIT
#ifndef STANDIN_CALCULATOR_H
#define STANDIN_CALCULATOR_H

#include <deque>
#include <muParser.h>
#include <string>
#include <string_view>

namespace brox {

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

} // namespace brox

#endif
