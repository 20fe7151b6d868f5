// SPDX-License-Identifier: MIT
#include "brox_dhs.h"
#include "brox_man.h"
#include "fuzz_host.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <limits>

namespace {

constexpr int maxTyped = 64; // keys of an input that are typed one by one

/** Evaluates what stands in the line edit; whether all values gave a number. */
void evaluate(const BroxDhsFormula& formula)
{
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int holes[][4] = {{25, 400, 10, 30}, {0, 0, 0, 0},
        {highest, highest, lowest, highest}, {lowest, lowest, highest, lowest}};
    for (const auto& hole : holes) {
        int result = -1;
        bool success = false;
        formula.calculateDhs(hole[0], hole[1], hole[2], hole[3], &result, &success);
        fuzzCheck(success || result == 0, "a formula without a value gives 0");
    }
}

void press(QLineEdit* line, QChar character)
{
    const int key = character == '\b' ? int(Qt::Key_Backspace)
        : character == '\x7f'         ? int(Qt::Key_Delete)
                                      : int(character.toUpper().unicode());
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(character));
    QCoreApplication::sendEvent(line, &event);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const int step = fuzzStep();
    static BroxDhsFormula* const formula = [] {
        auto* widget = new BroxDhsFormula;
        widget->setStepId(step);
        return widget;
    }();
    static QLineEdit* const line = formula->findChild<QLineEdit*>("dhsLineEdit");
    static QString admitted;
    static const auto connection = QObject::connect(
        formula, &BroxDhsFormula::dhsFormulaChanged, [](const QString& text) { admitted = text; });

    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    BroxModel model("model");
    model.setDhsFormula(text);
    formula->setDhsFormula(&model);
    evaluate(*formula);

    line->clear();
    for (const QChar character : text.left(maxTyped)) {
        admitted.clear();
        press(line, character);
        fuzzCheck(admitted.isEmpty() || admitted == line->text(), "what is admitted is on show");
    }
    evaluate(*formula);
    fuzzCheck(bool(connection), "the widget reports what is typed");
    return 0;
}
