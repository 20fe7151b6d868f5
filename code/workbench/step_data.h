// SPDX-License-Identifier: MIT
#ifndef STEP_DATA_H
#define STEP_DATA_H

#include "data_file.h"

#include <QWidget>
#include <array>

namespace brox {

/** What of a step's viewer concerns its files: what it has read of each, and whether it has
 *  something that is in no file. Lives as long as the viewer. */
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

signals:
    /** Something was edited, selected, saved or loaded that drill sizes depend on. */
    void touched();

    /** The module's mark went up or down; it goes down when a save is done. */
    void edited(DataFile::Kind kind, bool isEdited);

private slots:
    void modelsChanged(bool isEdited); // by signature text: the viewer's class is not known here

private:
    void nameBits(const QString& title);
    void triggerBits(const char* action);
    void follow(DataFile::Kind kind, bool isEdited);

    QWidget* mViewer;
    QWidget* mBits;
    QString mStep;
    std::array<File, std::size(DataFile::moduleKinds)> mFiles;
};

} // namespace brox

#endif
