// SPDX-License-Identifier: MIT
#include "brox_dhs.h"
#include "brox_man.h"
#include "fuzz_host.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <limits>

static void evaluate(const BroxDhsFormula& formula)
{
    constexpr int highest = std::numeric_limits<int>::max();
    int result = -1;
    bool success = false;
    formula.calculateDhs(25, highest, -highest - 1, highest, &result, &success);
    fuzzCheck(success || result == 0, "a formula without a value gives 0");
}

/** Any text as a model's formula, and typed key by key. */
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const int step = fuzzStep();
    static BroxDhsFormula& formula = *new BroxDhsFormula; // outlives the application's end
    formula.setStepId(step);
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    BroxModel model("model");
    model.setDhsFormula(text);
    formula.setDhsFormula(&model);
    evaluate(formula);

    auto* line = formula.findChild<QLineEdit*>("dhsLineEdit");
    line->clear();
    const auto check = QObject::connect(
        &formula, &BroxDhsFormula::dhsFormulaChanged, line, [line](const QString& admitted) {
            fuzzCheck(admitted == line->text(), "what is admitted is on show");
        });
    for (const QChar character : text.left(64)) {
        const int key = character == '\b' ? int(Qt::Key_Backspace) : character.toUpper().unicode();
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, QString(character));
        QCoreApplication::sendEvent(line, &event);
    }
    QObject::disconnect(check);
    evaluate(formula);
    return 0;
}
