// SPDX-License-Identifier: MIT
#include "brox_models_file.h"

#include "brox_looks.h"
#include "brox_man.h"

#include <QDomDocument>

constinit const BroxXmlFile modelsFile(BroxSource("brox_viewer"), "brox.xml", "DrillToolModels",
    {BROX_KEY("brox_viewer", "Unable to find BROX XML file: %s", "419"),
        BROX_KEY("brox_viewer", "Error reading BROX XML file: %s", "432"),
        BROX_KEY("brox_viewer",
            "Error reading BROX XML file: %s\nparsing error message: %s\nin line %d column %d.",
            "440"),
        BROX_KEY("brox_viewer", "%s is not a legal BROX XML file.", "447")});

namespace {

void readModel(const QDomElement& element, BroxModel* model)
{
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        if (child.tagName() == QLatin1String("HoleType")) {
            model->setAmounts(child.attribute("name"), child.attribute("amount"),
                child.attribute("oversized"), child.attribute("os_amount"));
        } else if (child.tagName() == QLatin1String("DhsFormula")) {
            model->setDhsFormula(child.attribute("text"));
            model->setUseBitFile(child.attribute("use_bit_file") == yesOrNo(true));
        }
    }
}

void writeHoleType(const BroxHoleType& record, QDomDocument& document, QDomElement& parent)
{
    auto drillType = DrillTypeManager::Undefined;
    int amount = 0;
    int oversized = 0;
    int osAmount = 0;
    record.getAmounts(&drillType, &amount, &oversized, &osAmount);
    QDomElement element = document.createElement("HoleType");
    parent.appendChild(element);
    element.setAttribute("name", DrillTypeManager::instance()->drillTypeName(drillType));
    element.setAttribute("amount", QString::number(amount));
    element.setAttribute("oversized", QString::number(oversized));
    element.setAttribute("os_amount", QString::number(osAmount));
}

/** A name as the file holds it; never empty, since a model without a name is not read again. */
QString nameInFile(const QString& name)
{
    const QString text = xmlText(name);
    return text.isEmpty() ? QString(QChar::ReplacementCharacter) : text;
}

void writeModel(const BroxModel& model, QDomDocument& document, QDomElement& parent)
{
    QDomElement element = document.createElement("DrillToolModel");
    parent.appendChild(element);
    element.setAttribute("name", nameInFile(model.modelName()));
    for (int i = 0; i < model.holeTypeCount(); ++i) {
        if (const BroxHoleType* record = model.holeType(i)) {
            writeHoleType(*record, document, element);
        }
    }
    QDomElement formula = document.createElement("DhsFormula");
    element.appendChild(formula);
    formula.setAttribute("text", xmlText(model.dhsFormula()));
    formula.setAttribute("use_bit_file", yesOrNo(model.useBitFile()));
}

} // namespace

bool readModels(const QString& path, BroxModelSet* models)
{
    QDomDocument document;
    if (!modelsFile.read(path, &document) || !modelsFile.checkRoot(path, document)) {
        return false;
    }
    models->clear();
    const QDomElement root = document.documentElement();
    for (QDomNode node = root.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement element = node.toElement();
        const QString name = element.attribute("name");
        if (element.tagName() != QLatin1String("DrillToolModel") || name.isEmpty()) {
            continue;
        }
        if (BroxModel* model = models->createModel(name)) {
            readModel(element, model);
        }
    }
    return true;
}

bool writeModels(const QString& path, const BroxModelSet& models)
{
    QDomDocument document;
    QDomElement root = document.createElement(modelsFile.root());
    document.appendChild(root);
    for (int i = 0; i < models.modelCount(); ++i) {
        if (const BroxModel* model = models.modelAt(i)) {
            writeModel(*model, document, root);
        }
    }
    return modelsFile.write(path, document);
}
