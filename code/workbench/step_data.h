// SPDX-License-Identifier: MIT
#ifndef STEP_DATA_H
#define STEP_DATA_H

#include "data_file.h"
#include "fewest_tools.h"

#include <QSet>
#include <QWidget>
#include <array>
#include <cstddef>

namespace brox {

/** A step's viewer as the workbench sees it from outside, by the names of its widgets: what it has
 *  read of each file, whether it has something that is in no file, the model and the bits that it
 *  shows, and the commands of its user. Lives as long as the viewer. */
class StepData : public QObject
{
    Q_OBJECT

public:
    struct File
    {
        QByteArray known; ///< mark of what the viewer has read or written last
        bool isEdited = false; ///< by the module's own mark
        bool isLost = false; ///< a save failed that the module takes for done
        QByteArray unsaved; ///< what was to be saved then, where it is whole
        QString fault; ///< why it failed
    };

    /**
     * @param viewer  becomes the parent
     * @param step    what the user calls the step
     */
    StepData(QWidget* viewer, const QString& step);

    QWidget* viewer() const { return mViewer; }
    const QString& step() const { return mStep; }
    File& file(DataFile::Kind kind) { return mFiles[size_t(kind)]; }
    const File& file(DataFile::Kind kind) const { return mFiles[size_t(kind)]; }
    bool hasUnsaved() const;

    /** Whether the user has the viewer, or its window of bits, before him. */
    bool isInFront(DataFile::Kind kind) const;

    /** Has the module save, as its own command does. */
    void save(DataFile::Kind kind);

    /** Has the module mark something as unsaved without a change to it; false if it can't. */
    bool markEdited(DataFile::Kind kind);

    /** Closes the window of bits; false if the user wants to keep it. */
    bool closeBits();

    /** Has the table of tools calculated; what is being typed is entered first. */
    void recalculate();

    /** The model that is selected; empty if there is none. */
    QString selectedModel() const;

    /** Selects a model; false if there is none of that name. */
    bool selectModel(const QString& name);

    /** Makes a copy of the selected model, whose name is open for typing then. Does nothing if no
     *  model is selected.
     *
     * @throws HostError
     */
    void duplicateModel();

    /** What is shown of the selected model, which is what the module goes by. */
    DrillModel model() const;

    /** The approved bits, saved or not, by rising size. Of those of one size the last counts, as in
     *  the module. */
    std::vector<TableBit> approvedBits(Units units) const;

    /** Designations, as far as a host gets them, that only bits have which are not approved. The
     *  module takes such bits in when it reads their file, as a host expects. */
    QSet<QString> unapprovedBits() const;

signals:
    /** Something was edited, selected, saved or loaded that drill sizes depend on. */
    void touched();

    /** The module's mark went up or down; it goes down when a save is done. */
    void edited(DataFile::Kind kind, bool isEdited);

private slots:
    void modelsChanged(bool isEdited); // by signature text: the viewer's class is not known here

private:
    template <typename Part>
    Part* part(const char* name) const;
    void nameBits(const QString& title);
    void follow(DataFile::Kind kind, bool isEdited);

    QWidget* mViewer;
    QWidget* mBits;
    QString mStep;
    std::array<File, std::size(DataFile::moduleKinds)> mFiles;
};

} // namespace brox

#endif
