<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>BoardChoices</name>
    <message numerus="yes">
        <source>types of %n tool(s)</source>
        <translation>
            <numerusform>type of %n tool</numerusform>
            <numerusform>types of %n tools</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadySet</name>
    <message numerus="yes">
        <source>%n bit(s) without a designation</source>
        <translation>
            <numerusform>%n bit without a designation</numerusform>
            <numerusform>%n bits without a designation</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) without a size, which no job uses</source>
        <translation>
            <numerusform>%n bit without a size, which no job uses</numerusform>
            <numerusform>%n bits without a size, which no job uses</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bits have the designation %1</source>
        <translation>
            <numerusform>%n bit has the designation %1</numerusform>
            <numerusform>%n bits have the designation %1</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecentBoards</name>
    <message numerus="yes">
        <source>%1 and %n more file(s)</source>
        <translation>
            <numerusform>%1 and %n more file</numerusform>
            <numerusform>%1 and %n more files</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::BitsMenu</name>
    <message numerus="yes">
        <source>The table has %n bit(s) now.</source>
        <translation>
            <numerusform>The table has %n bit now.</numerusform>
            <numerusform>The table has %n bits now.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) imported</source>
        <translation>
            <numerusform>%n bit imported</numerusform>
            <numerusform>%n bits imported</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) will replace the table of bits.</source>
        <translation>
            <numerusform>%n bit will replace the table of bits.</numerusform>
            <numerusform>%n bits will replace the table of bits.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::ExportMenu</name>
    <message numerus="yes">
        <source> (%n row(s) to check)</source>
        <translation>
            <numerusform> (%n row to check)</numerusform>
            <numerusform> (%n rows to check)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> (%n tool(s) instead of %1)</source>
        <translation>
            <numerusform> (%n tool instead of %1)</numerusform>
            <numerusform> (%n tools instead of %1)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::FindingsDock</name>
    <message numerus="yes">
        <source>%Ln finding(s)</source>
        <translation>
            <numerusform>%Ln finding</numerusform>
            <numerusform>%Ln findings</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> (%Ln hard)</source>
        <translation>
            <numerusform> (%Ln hard)</numerusform>
            <numerusform> (%Ln hard)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::MainWindow</name>
    <message numerus="yes">
        <source>%Ln tool(s)</source>
        <translation>
            <numerusform>%Ln tool</numerusform>
            <numerusform>%Ln tools</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hole(s)</source>
        <translation>
            <numerusform>%Ln hole</numerusform>
            <numerusform>%Ln holes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln slot(s)</source>
        <translation>
            <numerusform>%Ln slot</numerusform>
            <numerusform>%Ln slots</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln row(s) to check</source>
        <translation>
            <numerusform>%Ln row to check</numerusform>
            <numerusform>%Ln rows to check</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::RulesDialog</name>
    <message numerus="yes">
        <source>%n tolerance(s) are unusually wide.</source>
        <translation>
            <numerusform>%n tolerance is unusually wide.</numerusform>
            <numerusform>%n tolerances are unusually wide.</numerusform>
        </translation>
    </message>
</context>
</TS>
