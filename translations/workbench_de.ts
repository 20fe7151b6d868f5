<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>DataFile</name>
    <message>
        <source>line %1: nested too deeply</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>line %1: the root element is &quot;%2&quot;, not &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the folder %1 can&apos;t be made</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DataGuard</name>
    <message>
        <source>nothing whole could be written to %1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overwrite: what stands there goes to the backups.
Keep: nothing is saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be read: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has changed since step %2 read it: another step or another program has saved it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No backup of %1 could be made: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save: if the computer stops meanwhile, the file may be lost.
Cancel: nothing is saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be moved to the backups</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what was read back is not what was saved</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save Again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be saved: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What was saved before is still there. What was to be saved counts as unsaved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Discard</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unsaved data will be lost.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DataStart</name>
    <message>
        <source>Another workbench is open on %1 (process %2 on %3).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Neither sees what the other changes until it opens a step. A save over what the other has saved is asked about first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be read: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no backup of it. It is not touched until you save, and then you are asked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore: the backup of %1 takes its place, and what stands there goes to the backups.
Leave: it is not touched until you save, and then you are asked.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restore</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Leave</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 can&apos;t be restored: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>it can&apos;t be moved to the backups</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ErrorBar</name>
    <message>
        <source>A click takes this line away; the log keeps it.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HostSession</name>
    <message>
        <source>the library can&apos;t %1: status %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no model &quot;%1&quot;; there are no models</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no model &quot;%1&quot;; there are: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no language &quot;%1&quot;; there are: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no step &quot;%1&quot;; there are: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LogDock</name>
    <message>
        <source>Log</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Step %1: %2 tools, %3 holes, %4 slots left out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1: model &quot;%2&quot; is now &quot;%3&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Step %1: model &quot;%2&quot; is deleted</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 saved</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>brox workbench</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open Board</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Boards (*.xml *.cvg *.drl *.xln *.xnc *.drd *.exc *.ncd *.nc *.tap *.txt);;IPC-2581 (*.xml *.cvg);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reading %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open a board to set up its drill tools.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose a step of the board in the menu Step.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1[*] - brox workbench</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Open Board...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Close Step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Units</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Inch (mils)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Metric (microns)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Next Tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Previous Tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;User Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&amp;About brox workbench</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>About brox workbench</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&lt;h3&gt;brox workbench %1&lt;/h3&gt;&lt;p&gt;Sets up the drill tools of printed-circuit boards: finished hole sizes become drill sizes, by models of the plating and a table of bits.&lt;/p&gt;&lt;p&gt;MIT licence. Models and bits are in&lt;br&gt;%2&lt;/p&gt;</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Question</name>
    <message>
        <source>brox workbench</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RecentBoards</name>
    <message>
        <source>%1 and %2 more</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UserGuide</name>
    <message>
        <source>brox user guide</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
