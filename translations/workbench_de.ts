<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>BoardChoices</name>
    <message numerus="yes">
        <source>types of %n tool(s)</source>
        <translation>
            <numerusform>Art von %n Werkzeug</numerusform>
            <numerusform>Arten von %n Werkzeugen</numerusform>
        </translation>
    </message>
    <message>
        <source>model %1</source>
        <translation>Modell %1</translation>
    </message>
    <message>
        <source>mils</source>
        <translation>Mil</translation>
    </message>
    <message>
        <source>microns</source>
        <translation>Mikrometer</translation>
    </message>
    <message>
        <source>step %1: %2</source>
        <translation>Step %1: %2</translation>
    </message>
    <message>
        <source>drill sizes in %1</source>
        <translation>Bohrmaße in %1</translation>
    </message>
    <message>
        <source>finished sizes in %1</source>
        <translation>Endmaße in %1</translation>
    </message>
    <message>
        <source>Chosen before for this board: %1</source>
        <translation>Zuvor für diese Leiterplatte gewählt: %1</translation>
    </message>
    <message>
        <source>%1: the choices for the board could not be saved: %2</source>
        <translation>%1: die Auswahl für die Leiterplatte konnte nicht gespeichert werden: %2</translation>
    </message>
</context>
<context>
    <name>BoardText</name>
    <message>
        <source>more than %1 files</source>
        <translation>mehr als %1 Dateien</translation>
    </message>
    <message>
        <source>it unpacks to more than %1 GiB or %2 times its size</source>
        <translation>entpackt hat es mehr als %1 GiB oder das %2-Fache seiner Größe</translation>
    </message>
    <message>
        <source>the archive can&apos;t be read: %1</source>
        <translation>das Archiv kann nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>no file &quot;%1&quot; in the archive</source>
        <translation>keine Datei „%1“ im Archiv</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>the file is named twice</source>
        <translation>die Datei ist zweimal genannt</translation>
    </message>
    <message>
        <source>an archive within a folder</source>
        <translation>ein Archiv in einem Ordner</translation>
    </message>
    <message>
        <source>an archive of more than %1 MiB can&apos;t be read from a pipe</source>
        <translation>ein Archiv von mehr als %1 MiB kann nicht aus einer Pipe gelesen werden</translation>
    </message>
    <message>
        <source>an archive within an archive</source>
        <translation>ein Archiv in einem Archiv</translation>
    </message>
    <message>
        <source>no drill file: it is </source>
        <translation>keine Bohrdatei, sondern </translation>
    </message>
    <message>
        <source>nothing of a board in it: %1</source>
        <translation>nichts von einer Leiterplatte darin: %1</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>no drill file; an IPC-2581 file is a board of its own, open it alone</source>
        <translation>keine Bohrdatei; eine IPC-2581-Datei ist eine Leiterplatte für sich, öffnen Sie sie allein</translation>
    </message>
    <message>
        <source>there is an IPC-2581 file</source>
        <translation>es gibt eine IPC-2581-Datei</translation>
    </message>
    <message>
        <source>there are Excellon files</source>
        <translation>es gibt Excellon-Dateien</translation>
    </message>
    <message>
        <source>%1: nothing to drill</source>
        <translation>%1: nichts zu bohren</translation>
    </message>
    <message>
        <source>%1: left out, it drills the same as %2</source>
        <translation>%1: weggelassen, bohrt dasselbe wie %2</translation>
    </message>
    <message>
        <source>taken: </source>
        <translation>genommen: </translation>
    </message>
    <message>
        <source>not taken: </source>
        <translation>nicht genommen: </translation>
    </message>
    <message>
        <source>trailing zeros left out</source>
        <translation>Nullen am Ende weggelassen</translation>
    </message>
    <message>
        <source>leading zeros left out</source>
        <translation>Nullen am Anfang weggelassen</translation>
    </message>
    <message>
        <source>a place further than 5 m from the origin</source>
        <translation>ein Ort weiter als 5 m vom Ursprung</translation>
    </message>
    <message>
        <source>%1 before a tool is selected</source>
        <translation>%1, bevor ein Werkzeug gewählt ist</translation>
    </message>
    <message>
        <source>neither a hole (G05) nor a routed path</source>
        <translation>weder eine Bohrung (G05) noch ein Fräsweg</translation>
    </message>
    <message>
        <source>a hole</source>
        <translation>eine Bohrung</translation>
    </message>
    <message>
        <source>a place before a repeat in one line</source>
        <translation>ein Ort vor einer Wiederholung in derselben Zeile</translation>
    </message>
    <message>
        <source>a repeat that follows no hole</source>
        <translation>eine Wiederholung, die keiner Bohrung folgt</translation>
    </message>
    <message>
        <source>a slot</source>
        <translation>ein Langloch</translation>
    </message>
    <message>
        <source>a repeat within a routed path</source>
        <translation>eine Wiederholung in einem Fräsweg</translation>
    </message>
    <message>
        <source>an arc without a centre or radius</source>
        <translation>ein Bogen ohne Mittelpunkt und Radius</translation>
    </message>
    <message>
        <source>no arc of this radius reaches from here to there</source>
        <translation>kein Bogen dieses Radius reicht vom Anfang zum Ende</translation>
    </message>
    <message>
        <source>a repeat of a slot</source>
        <translation>eine Wiederholung eines Langlochs</translation>
    </message>
    <message>
        <source>a circle</source>
        <translation>ein Kreis</translation>
    </message>
    <message>
        <source>a slot without an end</source>
        <translation>ein Langloch ohne Ende</translation>
    </message>
    <message>
        <source>a routed circle without a size</source>
        <translation>ein gefräster Kreis ohne Größe</translation>
    </message>
    <message>
        <source>no pattern to repeat</source>
        <translation>kein Muster, das zu wiederholen wäre</translation>
    </message>
    <message>
        <source>%1 after the program&apos;s end</source>
        <translation>%1 nach dem Ende des Programms</translation>
    </message>
    <message>
        <source>M00 in line %1 is taken for a stop: the program goes on behind it</source>
        <translation>M00 in Zeile %1 gilt als Halt: Das Programm geht danach weiter</translation>
    </message>
    <message>
        <source>ICI is neither ON nor OFF</source>
        <translation>ICI ist weder ON noch OFF</translation>
    </message>
    <message>
        <source>R%1 is no number from 1 to %2</source>
        <translation>R%1 ist keine Zahl von 1 bis %2</translation>
    </message>
    <message>
        <source>no command of a drill file: </source>
        <translation>kein Befehl einer Bohrdatei: </translation>
    </message>
    <message>
        <source>a diameter without a tool</source>
        <translation>ein Durchmesser ohne Werkzeug</translation>
    </message>
    <message>
        <source>a repeat without a distance</source>
        <translation>eine Wiederholung ohne Abstand</translation>
    </message>
    <message>
        <source>the origin is set after the first hole</source>
        <translation>der Ursprung wird nach der ersten Bohrung gesetzt</translation>
    </message>
    <message>
        <source>a pattern within a pattern</source>
        <translation>ein Muster in einem Muster</translation>
    </message>
    <message>
        <source>the pattern is not ended by M01</source>
        <translation>das Muster endet nicht mit M01</translation>
    </message>
    <message>
        <source>%1%2 is no coordinate</source>
        <translation>%1%2 ist keine Koordinate</translation>
    </message>
    <message>
        <source>the line is longer than %1</source>
        <translation>die Zeile ist länger als %1</translation>
    </message>
    <message>
        <source>diameter %1 is no number</source>
        <translation>Durchmesser %1 ist keine Zahl</translation>
    </message>
    <message>
        <source>diameter %1 is not above 0</source>
        <translation>Durchmesser %1 ist nicht größer als 0</translation>
    </message>
    <message>
        <source>diameter %1 has no decimal point</source>
        <translation>Durchmesser %1 hat keinen Dezimalpunkt</translation>
    </message>
    <message>
        <source>more than %1 tools</source>
        <translation>mehr als %1 Werkzeuge</translation>
    </message>
    <message>
        <source>the header does not end; the file is cut off</source>
        <translation>der Kopf endet nicht; die Datei ist abgeschnitten</translation>
    </message>
    <message>
        <source>the program does not end; the file is cut off</source>
        <translation>das Programm endet nicht; die Datei ist abgeschnitten</translation>
    </message>
    <message>
        <source>an XML file</source>
        <translation>eine XML-Datei</translation>
    </message>
    <message>
        <source>a Gerber file</source>
        <translation>eine Gerberdatei</translation>
    </message>
    <message>
        <source>a job file, which lists the board&apos;s files and has no holes itself</source>
        <translation>eine Auftragsdatei, die die Dateien der Leiterplatte nennt und selbst keine Bohrungen hat</translation>
    </message>
    <message>
        <source>a tape in EIA code; write it in ASCII</source>
        <translation>ein Streifen in EIA-Code; schreiben Sie ihn in ASCII</translation>
    </message>
    <message>
        <source>an archive</source>
        <translation>ein Archiv</translation>
    </message>
    <message>
        <source>a binary file</source>
        <translation>eine Binärdatei</translation>
    </message>
    <message>
        <source>a text without drill commands</source>
        <translation>ein Text ohne Bohrbefehle</translation>
    </message>
    <message>
        <source>an empty file</source>
        <translation>eine leere Datei</translation>
    </message>
    <message>
        <source>unknown format of numbers: </source>
        <translation>unbekanntes Zahlenformat: </translation>
    </message>
    <message>
        <source>no aperture: </source>
        <translation>keine Blende: </translation>
    </message>
    <message>
        <source>an aperture before the units</source>
        <translation>eine Blende vor der Einheit</translation>
    </message>
    <message>
        <source>no coordinate: </source>
        <translation>keine Koordinate: </translation>
    </message>
    <message>
        <source>incremental places are not read</source>
        <translation>Orte in Kettenmaßen werden nicht gelesen</translation>
    </message>
    <message>
        <source>no command of a Gerber file: %1</source>
        <translation>kein Befehl einer Gerberdatei: %1</translation>
    </message>
    <message>
        <source>unknown operation D%1</source>
        <translation>unbekannte Operation D%1</translation>
    </message>
    <message>
        <source>aperture D%1 is not defined</source>
        <translation>Blende D%1 ist nicht definiert</translation>
    </message>
    <message>
        <source>aperture D%1 is not round, so what it flashes is no hole</source>
        <translation>Blende D%1 ist nicht rund; was sie belichtet, ist keine Bohrung</translation>
    </message>
    <message>
        <source>aperture D%1 is not round, so what it draws is no slot</source>
        <translation>Blende D%1 ist nicht rund; was sie zieht, ist kein Langloch</translation>
    </message>
    <message>
        <source>arcs of a single quadrant (G74) are not read</source>
        <translation>Bögen eines einzelnen Quadranten (G74) werden nicht gelesen</translation>
    </message>
    <message>
        <source>an arc without a centre</source>
        <translation>ein Bogen ohne Mittelpunkt</translation>
    </message>
    <message>
        <source>the file does not end with M02; it is cut off</source>
        <translation>die Datei endet nicht mit M02; sie ist abgeschnitten</translation>
    </message>
    <message>
        <source>a command that does not end</source>
        <translation>ein Befehl, der nicht endet</translation>
    </message>
    <message>
        <source>a set&apos;s %1 behind its holes</source>
        <translation>%1 eines Set hinter dessen Bohrungen</translation>
    </message>
    <message>
        <source>scale=&quot;%1&quot; is no scale</source>
        <translation>scale=&quot;%1&quot; ist kein Maßstab</translation>
    </message>
    <message>
        <source>no CadHeader specifies the units of this hole</source>
        <translation>kein CadHeader nennt die Einheit dieser Bohrung</translation>
    </message>
    <message>
        <source>a hole without platingStatus</source>
        <translation>eine Bohrung ohne platingStatus</translation>
    </message>
    <message>
        <source>unknown platingStatus &quot;%1&quot;</source>
        <translation>unbekannter platingStatus „%1“</translation>
    </message>
    <message>
        <source>a hole that is scaled</source>
        <translation>eine Bohrung, die skaliert ist</translation>
    </message>
    <message>
        <source>a slot without a width</source>
        <translation>ein Langloch ohne Breite</translation>
    </message>
    <message>
        <source>no IPC-2581 file: the root element is &quot;%1&quot;</source>
        <translation>keine IPC-2581-Datei: Das Wurzelelement ist „%1“</translation>
    </message>
    <message>
        <source>a slot without a shape</source>
        <translation>ein Langloch ohne Form</translation>
    </message>
    <message>
        <source>no shape &quot;%1&quot; for this slot</source>
        <translation>keine Form „%1“ für dieses Langloch</translation>
    </message>
    <message>
        <source>a second step &quot;%1&quot;</source>
        <translation>ein zweiter Step „%1“</translation>
    </message>
    <message>
        <source>no CadHeader specifies the units of this repeat</source>
        <translation>kein CadHeader nennt die Einheit dieser Wiederholung</translation>
    </message>
    <message>
        <source>copies of step &quot;%1&quot; are placed by its datum, which is not its origin</source>
        <translation>Kopien des Steps „%1“ liegen nach dessen Bezugspunkt, der nicht sein Ursprung ist</translation>
    </message>
    <message>
        <source>step &quot;%1&quot; repeats itself, or repeats are nested too deeply</source>
        <translation>Step „%1“ wiederholt sich selbst, oder Wiederholungen sind zu tief verschachtelt</translation>
    </message>
    <message>
        <source>no step &quot;%1&quot; to repeat</source>
        <translation>kein Step „%1“, der zu wiederholen wäre</translation>
    </message>
    <message>
        <source>is no number</source>
        <translation>ist keine Zahl</translation>
    </message>
    <message>
        <source>unknown units &quot;%1&quot;; known are MILLIMETER, MICRON and INCH</source>
        <translation>unbekannte Einheit „%1“; bekannt sind MILLIMETER, MICRON und INCH</translation>
    </message>
    <message>
        <source>is no size of a shape</source>
        <translation>ist keine Größe einer Form</translation>
    </message>
    <message>
        <source>is negative</source>
        <translation>ist negativ</translation>
    </message>
    <message>
        <source>is too large</source>
        <translation>ist zu groß</translation>
    </message>
    <message>
        <source>is no size of a hole</source>
        <translation>ist keine Größe einer Bohrung</translation>
    </message>
    <message>
        <source>is too large for a hole, the most are 500 mm</source>
        <translation>ist zu groß für eine Bohrung, höchstens 500 mm sind möglich</translation>
    </message>
    <message>
        <source>is no number from 1 to %1</source>
        <translation>ist keine Zahl von 1 bis %1</translation>
    </message>
    <message>
        <source>too many holes</source>
        <translation>zu viele Bohrungen</translation>
    </message>
    <message>
        <source>step &quot;%1&quot; is too large: more than %2 holes, where a slot counts as %3 or more, or more than %4 copies of steps</source>
        <translation>Step „%1“ ist zu groß: mehr als %2 Bohrungen, wobei ein Langloch als %3 oder mehr zählt, oder mehr als %4 Kopien von Steps</translation>
    </message>
    <message>
        <source>step &quot;%1&quot; reaches too far</source>
        <translation>Step „%1“ reicht zu weit</translation>
    </message>
    <message>
        <source>a panel reaches too far for places of 32 bits</source>
        <translation>ein Nutzen reicht zu weit für Orte in 32 Bit</translation>
    </message>
    <message>
        <source>no drilled hole and no slot; contours: %1, back drills: %2</source>
        <translation>weder Bohrung noch Langloch; Konturen: %1, Rückbohrungen: %2</translation>
    </message>
    <message>
        <source>elements are nested more than %1 deep</source>
        <translation>Elemente sind tiefer als %1-fach verschachtelt</translation>
    </message>
    <message>
        <source>the XML does not end; the file is cut off</source>
        <translation>das XML endet nicht; die Datei ist abgeschnitten</translation>
    </message>
    <message>
        <source>no well-formed XML: %1</source>
        <translation>kein wohlgeformtes XML: %1</translation>
    </message>
    <message>
        <source>unknown units: </source>
        <translation>unbekannte Einheit: </translation>
    </message>
    <message>
        <source>aperture D%1 is defined twice</source>
        <translation>Blende D%1 ist zweimal definiert</translation>
    </message>
    <message>
        <source>a hole without x and y</source>
        <translation>eine Bohrung ohne x und y</translation>
    </message>
    <message>
        <source>a second CadHeader specifies other units</source>
        <translation>ein zweiter CadHeader nennt andere Einheiten</translation>
    </message>
    <message>
        <source>the file does not say what layer &quot;%1&quot; is for; its holes are drilled</source>
        <translation>die Datei sagt nicht, wofür Lage „%1“ ist; ihre Bohrungen werden gebohrt</translation>
    </message>
    <message>
        <source>a slot of several shapes, or of a moved one</source>
        <translation>ein Langloch aus mehreren Formen oder einer verschobenen</translation>
    </message>
    <message>
        <source>the file does not name its main step; &quot;%1&quot; is taken</source>
        <translation>die Datei nennt ihren Haupt-Step nicht; „%1“ wird genommen</translation>
    </message>
    <message>
        <source>is neither true nor false</source>
        <translation>ist weder true noch false</translation>
    </message>
    <message>
        <source>the name is not written in UTF-8</source>
        <translation>der Name ist nicht in UTF-8 geschrieben</translation>
    </message>
    <message>
        <source>the units change in line %1</source>
        <translation>die Einheit wechselt in Zeile %1</translation>
    </message>
    <message>
        <source>places are counted from an origin of their own, set in line %1</source>
        <translation>Orte zählen von einem eigenen Ursprung aus, gesetzt in Zeile %1</translation>
    </message>
    <message>
        <source>T%1 has one diameter in line %2 and another in line %3, which counts</source>
        <translation>T%1 hat in Zeile %2 einen Durchmesser und in Zeile %3 einen anderen, der gilt</translation>
    </message>
    <message>
        <source>two files in it are called %1</source>
        <translation>zwei Dateien darin heißen %1</translation>
    </message>
    <message>
        <source>tool %1: %2 %3 is too small</source>
        <translation>Werkzeug %1: %2 %3 ist zu klein</translation>
    </message>
    <message>
        <source>tool %1: %2 %3 is too large, the most are 500 mm</source>
        <translation>Werkzeug %1: %2 %3 ist zu groß, höchstens 500 mm sind möglich</translation>
    </message>
    <message>
        <source>tool %1 has no diameter</source>
        <translation>Werkzeug %1 hat keinen Durchmesser</translation>
    </message>
    <message>
        <source>the file does not specify the width of the slots of %1</source>
        <translation>die Datei nennt die Breite der Langlöcher von %1 nicht</translation>
    </message>
    <message>
        <source>the header does not end: no % or M95 before a place</source>
        <translation>der Kopf endet nicht: weder % noch M95 vor einem Ort</translation>
    </message>
    <message>
        <source>coordinates beside %1</source>
        <translation>Koordinaten neben %1</translation>
    </message>
    <message>
        <source>unknown command </source>
        <translation>unbekannter Befehl </translation>
    </message>
    <message>
        <source>a word stands twice: </source>
        <translation>ein Wort steht zweimal: </translation>
    </message>
    <message>
        <source>the file does not say what %1 layers are for, &quot;%2&quot; among them; their holes are drilled</source>
        <translation>die Datei sagt nicht, wofür %1 Lagen sind, darunter „%2“; ihre Bohrungen werden gebohrt</translation>
    </message>
    <message>
        <source>it is cut off</source>
        <translation>es ist abgeschnitten</translation>
    </message>
    <message>
        <source>it is damaged, %1</source>
        <translation>es ist beschädigt, %1</translation>
    </message>
    <message>
        <source>it is packed more than %1 times</source>
        <translation>es ist mehr als %1-mal gepackt</translation>
    </message>
    <message>
        <source>the archive is damaged or cut off</source>
        <translation>das Archiv ist beschädigt oder abgeschnitten</translation>
    </message>
    <message>
        <source>a link</source>
        <translation>eine Verknüpfung</translation>
    </message>
    <message>
        <source>a pipe or a device</source>
        <translation>eine Pipe oder ein Gerät</translation>
    </message>
    <message>
        <source>the archive has no end; it is cut off</source>
        <translation>das Archiv hat kein Ende; es ist abgeschnitten</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands for text of another file, which is not read</source>
        <translation>„%1“ steht für Text einer anderen Datei, die nicht gelesen wird</translation>
    </message>
    <message>
        <source>a tag or a comment of more than %1 MiB</source>
        <translation>ein Element oder Kommentar von mehr als %1 MiB</translation>
    </message>
    <message>
        <source>nothing specifies whether %1 is in millimetres or inches; --file-units inch or metric does</source>
        <translation>nichts gibt an, ob %1 in Millimetern oder Zoll ist; --file-units inch oder metric tut es</translation>
    </message>
    <message>
        <source>not read: </source>
        <translation>nicht gelesen: </translation>
    </message>
    <message>
        <source>%1 or as likely %2; --digits decides</source>
        <translation>%1 oder ebenso gut %2; --digits entscheidet</translation>
    </message>
    <message>
        <source>its numbers have %1 digits, more than the %2:%3 that it specifies</source>
        <translation>ihre Zahlen haben %1 Ziffern, mehr als die %2:%3, die sie nennt</translation>
    </message>
    <message>
        <source>a tool behind a place: </source>
        <translation>ein Werkzeug hinter einem Ort: </translation>
    </message>
    <message>
        <source>no comment specifies the size of the tool that follows the stop</source>
        <translation>kein Kommentar nennt den Durchmesser des Werkzeugs nach dem Halt</translation>
    </message>
    <message>
        <source>the comment in line %1 is a place, which is not drilled</source>
        <translation>der Kommentar in Zeile %1 ist ein Ort; er wird nicht gebohrt</translation>
    </message>
    <message>
        <source>the centre of an arc without its end</source>
        <translation>der Mittelpunkt eines Bogens ohne dessen Ende</translation>
    </message>
    <message>
        <source>a RAR archive; pack the files as .zip</source>
        <translation>ein RAR-Archiv; packen Sie die Dateien als .zip</translation>
    </message>
    <message>
        <source>a picture</source>
        <translation>ein Bild</translation>
    </message>
    <message>
        <source>a document</source>
        <translation>ein Dokument</translation>
    </message>
    <message>
        <source>a design of a CAD program, which has to export drill files</source>
        <translation>ein Entwurf eines CAD-Programms, das Bohrdateien ausgeben muss</translation>
    </message>
    <message>
        <source>%1 (and %2 more like it)</source>
        <translation>%1 (und %2 weitere dieser Art)</translation>
    </message>
    <message>
        <source>%1: holes and slots that %2 drills too are left out: %3</source>
        <translation>%1: Bohrungen und Langlöcher, die auch %2 bohrt, sind weggelassen: %3</translation>
    </message>
    <message>
        <source>not compared: </source>
        <translation>nicht verglichen: </translation>
    </message>
    <message>
        <source>drill files</source>
        <translation>Bohrdateien</translation>
    </message>
    <message>
        <source>compared: </source>
        <translation>verglichen: </translation>
    </message>
    <message>
        <source>a pattern that is turned or mirrored is not read</source>
        <translation>ein gedrehtes oder gespiegeltes Muster wird nicht gelesen</translation>
    </message>
    <message>
        <source>%1 changes what is drilled, and is not read</source>
        <translation>%1 ändert, was gebohrt wird, und wird nicht gelesen</translation>
    </message>
    <message>
        <source>lists of tools: </source>
        <translation>Werkzeuglisten: </translation>
    </message>
    <message>
        <source>a comment</source>
        <translation>ein Kommentar</translation>
    </message>
    <message>
        <source>the size of %1 is that of %2</source>
        <translation>die Größe von %1 ist die aus %2</translation>
    </message>
    <message>
        <source>the tolerance of %1 is that of %2</source>
        <translation>die Toleranz von %1 ist die aus %2</translation>
    </message>
    <message>
        <source>the plating of %1 is that of %2</source>
        <translation>die Durchkontaktierung von %1 ist die aus %2</translation>
    </message>
    <message>
        <source>%1 is plated, but not by %2</source>
        <translation>%1 ist durchkontaktiert, nach %2 aber nicht</translation>
    </message>
    <message>
        <source>%1 is not plated, but is by %2</source>
        <translation>%1 ist nicht durchkontaktiert, nach %2 aber doch</translation>
    </message>
    <message>
        <source>%1 has %2 mm where %3 says %4 mm</source>
        <translation>%1 hat %2 mm, wo %3 %4 mm nennt</translation>
    </message>
    <message>
        <source>holes of %1: %2 where %3 says %4</source>
        <translation>Bohrungen von %1: %2, wo %3 %4 nennt</translation>
    </message>
    <message>
        <source>its numbers are read as %1, by %2</source>
        <translation>ihre Zahlen werden gelesen als %1, nach %2</translation>
    </message>
    <message>
        <source>its places are incremental, by %1</source>
        <translation>ihre Orte sind inkremental, nach %1</translation>
    </message>
    <message>
        <source>a list of tools</source>
        <translation>eine Werkzeugliste</translation>
    </message>
    <message>
        <source>inches</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>millimetres</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>its numbers are read as %1 where %2 specifies %3</source>
        <translation>ihre Zahlen werden gelesen als %1, wo %2 %3 angibt</translation>
    </message>
    <message>
        <source>an outline</source>
        <translation>ein Umriss</translation>
    </message>
    <message>
        <source>the holes cover %1 mm, the outline in %2 %3 mm; %4 times as large they would fit</source>
        <translation>die Bohrungen nehmen %1 mm ein, der Umriss in %2 %3 mm; %4-mal so groß würden sie passen</translation>
    </message>
    <message>
        <source>the holes lie beside the outline in %1; %2, %3 mm would move them to its middle</source>
        <translation>die Bohrungen liegen neben dem Umriss in %1; um %2, %3 mm verschoben lägen sie in seiner Mitte</translation>
    </message>
    <message>
        <source>the holes cover %1 mm, and reach beyond the outline in %2</source>
        <translation>die Bohrungen nehmen %1 mm ein und reichen über den Umriss in %2 hinaus</translation>
    </message>
    <message>
        <source>too many holes and slots, the most are %1 holes; a slot counts as %2 or more</source>
        <translation>zu viele Bohrungen und Langlöcher, höchstens %1 Bohrungen sind möglich; ein Langloch zählt als %2 oder mehr</translation>
    </message>
    <message>
        <source>the lists of tools have more than %1 MiB</source>
        <translation>die Werkzeuglisten sind größer als %1 MiB</translation>
    </message>
    <message>
        <source>more than %1 lines and arcs of shapes</source>
        <translation>mehr als %1 Linien und Bögen von Formen</translation>
    </message>
    <message>
        <source>more than %1 repeats of steps</source>
        <translation>mehr als %1 Wiederholungen von Steps</translation>
    </message>
    <message>
        <source>line %1 begins with a slash, by which operators may skip it; it counts</source>
        <translation>Zeile %1 beginnt mit einem Schrägstrich, mit dem Bediener sie überspringen können; sie zählt</translation>
    </message>
    <message>
        <source>an arc whose ends are not equally far from its centre</source>
        <translation>ein Bogen, dessen Enden nicht gleich weit von seinem Mittelpunkt liegen</translation>
    </message>
    <message>
        <source>%1 is specified as plated, and taken so, in a file of non-plated holes</source>
        <translation>%1 ist in einer Datei nicht durchkontaktierter Löcher als durchkontaktiert angegeben und wird so genommen</translation>
    </message>
    <message>
        <source>%1 is specified as non-plated, and taken so, in a file of plated holes</source>
        <translation>%1 ist in einer Datei durchkontaktierter Löcher als nicht durchkontaktiert angegeben und wird so genommen</translation>
    </message>
</context>
<context>
    <name>DataFile</name>
    <message>
        <source>line %1: nested too deeply</source>
        <translation>Zeile %1: zu tief verschachtelt</translation>
    </message>
    <message>
        <source>line %1: the root element is &quot;%2&quot;, not &quot;%3&quot;</source>
        <translation>Zeile %1: Das Wurzelelement ist „%2“, nicht „%3“</translation>
    </message>
    <message>
        <source>line %1, column %2: %3</source>
        <translation>Zeile %1, Spalte %2: %3</translation>
    </message>
    <message>
        <source>the folder %1 can&apos;t be made</source>
        <translation>der Ordner %1 kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>no ready set &quot;%1&quot;; there are: %2</source>
        <translation>kein fertiger Satz „%1“; es gibt: %2</translation>
    </message>
    <message>
        <source>1: no bits</source>
        <translation>1: keine Bohrer</translation>
    </message>
    <message>
        <source>it can&apos;t be moved to the backups</source>
        <translation>sie lässt sich nicht zu den Sicherungen verschieben</translation>
    </message>
    <message>
        <source>another workbench is saving</source>
        <translation>eine andere Workbench speichert gerade</translation>
    </message>
    <message>
        <source>no backup could be made: %1</source>
        <translation>es ließ sich keine Sicherung anlegen: %1</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>das ist ein Ordner</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>das ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>can&apos;t be read</source>
        <translation>nicht lesbar</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 und %2 weitere</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>leer</translation>
    </message>
    <message>
        <source>what was read back differs from what was saved</source>
        <translation>zurückgelesen wurde etwas anderes, als gespeichert wurde</translation>
    </message>
</context>
<context>
    <name>DataStart</name>
    <message>
        <source>Another workbench is open on %1 (process %2 on %3).</source>
        <translation>Eine andere Workbench arbeitet mit %1 (Prozess %2 auf %3).</translation>
    </message>
    <message>
        <source>Neither sees what the other changes until it opens a step. A save over what the other has saved is asked about first.</source>
        <translation>Keine sieht die Änderungen der anderen, bis sie einen Step öffnet. Bevor die eine überschreibt, was die andere gespeichert hat, wird gefragt.</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>%1 can&apos;t be read: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>Belassen</translation>
    </message>
    <message>
        <source>%1 can&apos;t be restored: %2</source>
        <translation>%1 kann nicht wiederhergestellt werden: %2</translation>
    </message>
    <message>
        <source>%1: the path is too long: %2 bytes of at most %3</source>
        <translation>%1: der Pfad ist zu lang: %2 Bytes von höchstens %3</translation>
    </message>
    <message>
        <source>%1: the folder can&apos;t be made</source>
        <translation>%1: der Ordner lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>Restore Defaults</source>
        <translation>Standard wiederherstellen</translation>
    </message>
    <message>
        <source>Restore Defaults: the defaults replace the file.
Its present content is kept as a backup.</source>
        <translation>Standard wiederherstellen: Der Standard ersetzt die Datei.
Ihr jetziger Inhalt bleibt als Sicherung erhalten.</translation>
    </message>
    <message>
        <source>Leave: the file stays as it is, and nothing is exported until it can be read.</source>
        <translation>Belassen: Die Datei bleibt, wie sie ist, und nichts wird exportiert, bis sie lesbar ist.</translation>
    </message>
    <message>
        <source>Leave: the file stays as it is; before you save over it you are asked.</source>
        <translation>Belassen: Die Datei bleibt, wie sie ist; bevor Sie sie überschreiben, werden Sie gefragt.</translation>
    </message>
    <message>
        <source>Restore: the backup of %1 replaces the file (%2).</source>
        <translation>Wiederherstellen: Die Sicherung vom %1 ersetzt die Datei (%2).</translation>
    </message>
</context>
<context>
    <name>NearWord</name>
    <message>
        <source>there are: %1</source>
        <translation>es gibt: %1</translation>
    </message>
    <message>
        <source>did you mean %1?</source>
        <translation>meinten Sie %1?</translation>
    </message>
</context>
<context>
    <name>OpenBoard</name>
    <message>
        <source>Reading %1</source>
        <translation>%1 wird gelesen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>Inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Millimetre</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>%1 does not specify its units.</source>
        <translation>%1 gibt keine Einheit an.</translation>
    </message>
    <message>
        <source>Boards (%1)</source>
        <translation>Leiterplatten (%1)</translation>
    </message>
    <message>
        <source>IPC-2581 (%1)</source>
        <translation>IPC-2581 (%1)</translation>
    </message>
    <message>
        <source>Drill files (%1)</source>
        <translation>Bohrdateien (%1)</translation>
    </message>
    <message>
        <source>Archives (%1)</source>
        <translation>Archive (%1)</translation>
    </message>
    <message>
        <source>All files (*)</source>
        <translation>Alle Dateien (*)</translation>
    </message>
    <message>
        <source>The buttons show the extent of the holes in either unit. Choose the one that fits the board.</source>
        <translation>Die Schaltflächen zeigen die Ausdehnung der Bohrungen in beiden Einheiten. Wählen Sie die, die zur Leiterplatte passt.</translation>
    </message>
</context>
<context>
    <name>PlanText</name>
    <message>
        <source>Plated</source>
        <translation>Metallisiert</translation>
    </message>
    <message>
        <source>Non-plated</source>
        <translation>Nicht metallisiert</translation>
    </message>
    <message>
        <source>Via</source>
        <translation>Via</translation>
    </message>
    <message>
        <source>Press-fit</source>
        <translation>Einpress</translation>
    </message>
    <message>
        <source>Plated slot</source>
        <translation>Langloch, metallisiert</translation>
    </message>
    <message>
        <source>Non-plated slot</source>
        <translation>Langloch, nicht metallisiert</translation>
    </message>
    <message>
        <source>out-of-tolerance</source>
        <translation>außer Toleranz</translation>
    </message>
    <message>
        <source>no-bit</source>
        <translation>kein Bohrer passt</translation>
    </message>
    <message>
        <source>no-size</source>
        <translation>kein Bohrmaß</translation>
    </message>
    <message>
        <source>tolerance-assumed</source>
        <translation>Toleranz angenommen</translation>
    </message>
    <message>
        <source>type-assumed</source>
        <translation>Art angenommen</translation>
    </message>
    <message>
        <source>%1 by the user</source>
        <translation>%1: vom Benutzer gewählt</translation>
    </message>
    <message>
        <source>via by the rule for small plated holes</source>
        <translation>Via nach der Regel für kleine metallisierte Bohrungen</translation>
    </message>
    <message>
        <source>%1 by the rule for %2</source>
        <translation>%1 nach der Regel für %2</translation>
    </message>
    <message>
        <source>contours left out: %1 (no slots of one width)</source>
        <translation>Konturen weggelassen: %1 (keine Langlöcher einer Breite)</translation>
    </message>
    <message>
        <source>back drills left out: %1 (the fabricator chooses their tools)</source>
        <translation>Rückbohrungen weggelassen: %1 (ihre Werkzeuge wählt der Hersteller)</translation>
    </message>
    <message>
        <source>holes left out: %1 (on layers that are not drilled)</source>
        <translation>Bohrungen weggelassen: %1 (auf Lagen, die nicht gebohrt werden)</translation>
    </message>
    <message>
        <source>types (tools: %1)</source>
        <translation>Arten (Werkzeuge: %1)</translation>
    </message>
    <message>
        <source>tolerances (tools: %1)</source>
        <translation>Toleranzen (Werkzeuge: %1)</translation>
    </message>
    <message>
        <source>digits of %1</source>
        <translation>Stellen von %1</translation>
    </message>
    <message>
        <source>assumed: %1</source>
        <translation>angenommen: %1</translation>
    </message>
    <message>
        <source>plated</source>
        <translation>metallisiert</translation>
    </message>
    <message>
        <source>nonplated</source>
        <translation>nicht metallisiert</translation>
    </message>
    <message>
        <source>via</source>
        <translation>Via</translation>
    </message>
    <message>
        <source>press-fit</source>
        <translation>Einpress</translation>
    </message>
    <message>
        <source>%1 (%2 to %3)</source>
        <translation>%1 (%2 bis %3)</translation>
    </message>
    <message>
        <source>Drill map, layer %1</source>
        <translation>Bohrplan, Lage %1</translation>
    </message>
    <message>
        <source>Board %1, step %2, model %3%4. Circles have the drill size; sizes in %5.</source>
        <translation>Leiterplatte %1, Step %2, Modell %3%4. Kreise haben das Bohrmaß; Maße in %5.</translation>
    </message>
    <message>
        <source>Tool</source>
        <comment>map legend</comment>
        <translation>Wkz.</translation>
    </message>
    <message>
        <source>Bit</source>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>Drill size</source>
        <translation>Bohrmaß</translation>
    </message>
    <message>
        <source>Hits</source>
        <translation>Hübe</translation>
    </message>
    <message>
        <source>Slots</source>
        <comment>map legend</comment>
        <translation>Langl.</translation>
    </message>
    <message>
        <source>no size</source>
        <translation>kein Maß</translation>
    </message>
    <message>
        <source>inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>%1: a map is written as .svg, .pdf or .png</source>
        <translation>%1: ein Bohrplan wird als .svg, .pdf oder .png geschrieben</translation>
    </message>
    <message>
        <source>step &quot;%1&quot;: no holes, so no map</source>
        <translation>Step „%1“: keine Bohrungen, also kein Bohrplan</translation>
    </message>
    <message>
        <source>Drill map of %1</source>
        <translation>Bohrplan von %1</translation>
    </message>
    <message>
        <source>mil</source>
        <translation>Mil</translation>
    </message>
    <message>
        <source>micron</source>
        <translation>µm</translation>
    </message>
    <message>
        <source>step &quot;%1&quot;: no holes, so no drill program</source>
        <translation>Step „%1“: keine Bohrungen, also kein Bohrprogramm</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot;: the tool &quot;%2&quot; of %3 %4 has no drill size by model &quot;%5&quot; and its formula</source>
        <translation>Lage „%1“: das Werkzeug „%2“ von %3 %4 hat nach Modell „%5“ und dessen Formel kein Bohrmaß</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot;, %2: %3 tools; a drill program holds at most %4</source>
        <translation>Lage „%1“, %2: %3 Werkzeuge; ein Bohrprogramm fasst höchstens %4</translation>
    </message>
    <message>
        <source>non-plated</source>
        <translation>nicht metallisiert</translation>
    </message>
    <message>
        <source>en</source>
        <comment>code of the language itself</comment>
        <translation>de</translation>
    </message>
    <message>
        <source>Map of layer %1</source>
        <translation>Bohrplan der Lage %1</translation>
    </message>
    <message>
        <source>Drill report of %1</source>
        <translation>Bohrbericht von %1</translation>
    </message>
    <message>
        <source>%1: a report is written as .html or .pdf</source>
        <translation>%1: ein Bericht wird als .html oder .pdf geschrieben</translation>
    </message>
    <message>
        <source>%1: can&apos;t be written: %2</source>
        <translation>%1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>it is a folder</source>
        <translation>das ist ein Ordner</translation>
    </message>
    <message>
        <source>it is named twice</source>
        <translation>der Name kommt zweimal vor</translation>
    </message>
    <message>
        <source>Board</source>
        <translation>Leiterplatte</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Step</translation>
    </message>
    <message>
        <source>Model</source>
        <translation>Modell</translation>
    </message>
    <message>
        <source>Formula</source>
        <translation>Formel</translation>
    </message>
    <message>
        <source>Bits</source>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>rounded to bits of the table</source>
        <translation>auf Bohrer der Tabelle gerundet</translation>
    </message>
    <message>
        <source>not used</source>
        <translation>nicht benutzt</translation>
    </message>
    <message>
        <source>Units</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>Written by</source>
        <translation>Geschrieben von</translation>
    </message>
    <message>
        <source>Model or bits have edits that are not saved.</source>
        <translation>Modell oder Bohrer haben Änderungen, die nicht gespeichert sind.</translation>
    </message>
    <message>
        <source>Amounts</source>
        <translation>Zugaben</translation>
    </message>
    <message>
        <source>Hole type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Amount</source>
        <translation>Zugabe</translation>
    </message>
    <message>
        <source>Large from</source>
        <translation>Groß ab</translation>
    </message>
    <message>
        <source>Amount if large</source>
        <translation>Zugabe groß</translation>
    </message>
    <message>
        <source>Rules of the shop</source>
        <translation>Regeln des Betriebs</translation>
    </message>
    <message>
        <source>Drill table</source>
        <translation>Bohrtabelle</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>FHS</source>
        <translation>Endmaß</translation>
    </message>
    <message>
        <source>-Tol</source>
        <translation>Tol. −</translation>
    </message>
    <message>
        <source>+Tol</source>
        <translation>Tol. +</translation>
    </message>
    <message>
        <source>DHS</source>
        <translation>Bohrmaß</translation>
    </message>
    <message>
        <source>Tool</source>
        <translation>Wkz.</translation>
    </message>
    <message>
        <source>Flags</source>
        <translation>Hinweise</translation>
    </message>
    <message>
        <source>Decided by</source>
        <translation>Entschieden durch</translation>
    </message>
    <message>
        <source>Total</source>
        <translation>Summe</translation>
    </message>
    <message>
        <source>Slots</source>
        <translation>Langl.</translation>
    </message>
    <message>
        <source>Drill programs</source>
        <translation>Bohrprogramme</translation>
    </message>
    <message>
        <source>layer %1: digits of coordinates assumed to be %2</source>
        <translation>Lage %1: angenommene Stellen der Koordinaten: %2</translation>
    </message>
    <message>
        <source>Nothing.</source>
        <translation>Nichts.</translation>
    </message>
    <message>
        <source>Drill report: %1, step %2</source>
        <translation>Bohrbericht: %1, Step %2</translation>
    </message>
    <message>
        <source>no type &quot;%1&quot;; there are: plated, nonplated, via, press-fit</source>
        <translation>keine Art „%1“; es gibt: plated, nonplated, via, press-fit</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no size from 0 to 1000 mm</source>
        <translation>„%1“ ist kein Maß von 0 bis 1000 mm</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no tolerance such as -0.05/+0.10 or +-2mil</source>
        <translation>„%1“ ist keine Toleranz wie -0.05/+0.10 oder +-2mil</translation>
    </message>
    <message>
        <source>%1: no number of millimetres from 0 to 1000</source>
        <translation>%1: keine Zahl von 0 bis 1000 in Millimetern</translation>
    </message>
    <message>
        <source>%1unknown member &quot;%2&quot;</source>
        <translation>%1unbekannter Eintrag „%2“</translation>
    </message>
    <message>
        <source> no list of tolerances</source>
        <translation> keine Liste von Toleranzen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither none nor such as plated=-0.05/+0.10</source>
        <translation>„%1“ ist weder none noch wie plated=-0.05/+0.10</translation>
    </message>
    <message>
        <source> tolerances: two for %1 from %2 mm</source>
        <translation> Toleranzen: zwei für %1 ab %2 mm</translation>
    </message>
    <message>
        <source> from %1 mm</source>
        <translation> ab %1 mm</translation>
    </message>
    <message>
        <source>an arc whose ends are not equally far from its centre</source>
        <translation>ein Bogen, dessen Enden nicht gleich weit von seinem Mittelpunkt liegen</translation>
    </message>
    <message>
        <source>it is no file</source>
        <translation>das ist keine Datei</translation>
    </message>
    <message>
        <source>it is protected</source>
        <translation>sie ist schreibgeschützt</translation>
    </message>
    <message>
        <source>there is no folder %1</source>
        <translation>es gibt keinen Ordner %1</translation>
    </message>
    <message>
        <source>the folder can&apos;t be made</source>
        <translation>der Ordner lässt sich nicht anlegen</translation>
    </message>
    <message>
        <source>another program is writing there</source>
        <translation>ein anderes Programm schreibt gerade dort</translation>
    </message>
    <message>
        <source>%1: an earlier run was broken off</source>
        <translation>%1: ein früherer Lauf wurde abgebrochen</translation>
    </message>
    <message>
        <source>put in place now: %1</source>
        <translation>jetzt vollendet: %1</translation>
    </message>
    <message>
        <source>changed since, so left as they are: %1</source>
        <translation>seither geändert, daher belassen: %1</translation>
    </message>
    <message>
        <source>nothing of it was written</source>
        <translation>nichts davon wurde geschrieben</translation>
    </message>
    <message>
        <source>older than the file</source>
        <translation>älter als die Datei</translation>
    </message>
    <message>
        <source>unsaved edits</source>
        <translation>ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>saved</source>
        <translation>gespeichert</translation>
    </message>
    <message>
        <source>unapproved-bit</source>
        <translation>nicht freigegeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither a tool such as T3 nor a size such as 0.8mm</source>
        <translation>„%1“ ist weder ein Werkzeug wie T3 noch eine Größe wie 0.8mm</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not such as LAYER:T3=press-fit</source>
        <translation>„%1“ ist nicht von der Art LAGE:T3=press-fit</translation>
    </message>
    <message>
        <source>no layer &quot;%1&quot;; there are: %2</source>
        <translation>keine Lage „%1“; es gibt: %2</translation>
    </message>
    <message>
        <source>no tool %1 in layer %2; there are: %3</source>
        <translation>kein Werkzeug %1 in Lage %2; es gibt: %3</translation>
    </message>
    <message>
        <source> (%1)</source>
        <translation> (%1)</translation>
    </message>
    <message>
        <source>Models and bits</source>
        <translation>Modelle und Bohrer</translation>
    </message>
    <message>
        <source>The files of models and bits have been saved by others since they were read.</source>
        <translation>Die Dateien der Modelle und Bohrer sind von anderer Seite gespeichert worden, seit sie gelesen wurden.</translation>
    </message>
    <message>
        <source>Not drilled, and notes</source>
        <translation>Nicht gebohrt, und Hinweise</translation>
    </message>
    <message>
        <source>digits-doubtful</source>
        <translation>Ziffern zweifelhaft</translation>
    </message>
    <message>
        <source>no id, reason and day such as 2026-12-31</source>
        <translation>keine Kennung mit Grund und Tag wie 2026-12-31</translation>
    </message>
    <message>
        <source>accepted twice: %1</source>
        <translation>zweimal angenommen: %1</translation>
    </message>
    <message>
        <source>accepted, but not found: %1</source>
        <translation>angenommen, aber nicht gefunden: %1</translation>
    </message>
    <message>
        <source>accepted until %1, no longer: %2</source>
        <translation>angenommen bis %1, nun nicht mehr: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither drilled nor finished, nor such as LAYER=drilled</source>
        <translation>„%1“ ist weder drilled noch finished noch wie LAGE=drilled</translation>
    </message>
    <message>
        <source>drill sizes: %1; finished sizes: %2</source>
        <translation>Bohrmaße: %1; Endmaße: %2</translation>
    </message>
    <message>
        <source>different tools at one place</source>
        <translation>verschiedene Werkzeuge an einer Stelle</translation>
    </message>
    <message>
        <source>drilled areas overlap</source>
        <translation>Bohrungen überlappen sich</translation>
    </message>
    <message>
        <source>too near to each other</source>
        <translation>zu nah beieinander</translation>
    </message>
    <message>
        <source>not within the outline</source>
        <translation>nicht innerhalb des Umrisses</translation>
    </message>
    <message>
        <source>too near to the edge</source>
        <translation>zu nah am Rand</translation>
    </message>
    <message>
        <source>drill too large</source>
        <translation>Bohrer zu groß</translation>
    </message>
    <message>
        <source>slot too short for its width</source>
        <translation>Langloch zu kurz für seine Breite</translation>
    </message>
    <message>
        <source>hole too deep for its drill</source>
        <translation>Bohrung zu tief für ihren Bohrer</translation>
    </message>
    <message>
        <source>tolerance too narrow</source>
        <translation>Toleranz zu eng</translation>
    </message>
    <message>
        <source>drill smaller than the plated hole</source>
        <translation>Bohrer kleiner als die metallisierte Bohrung</translation>
    </message>
    <message>
        <source>other number of hits than a comment</source>
        <translation>andere Hubzahl als in einem Kommentar</translation>
    </message>
    <message>
        <source>other scale than the other files</source>
        <translation>anderer Maßstab als die übrigen Dateien</translation>
    </message>
    <message>
        <source>%1: %2 more, not listed</source>
        <translation>%1: %2 weitere, nicht aufgezählt</translation>
    </message>
    <message>
        <source>tools without a drill size: %1</source>
        <translation>Werkzeuge ohne Bohrmaß: %1</translation>
    </message>
    <message>
        <source>too many holes are too near to each other: not all were looked at</source>
        <translation>zu viele Bohrungen liegen zu nah beieinander: nicht alle wurden betrachtet</translation>
    </message>
    <message>
        <source>the outline is open, or too intricate</source>
        <translation>der Umriss ist offen oder zu verwickelt</translation>
    </message>
    <message>
        <source>the board specifies no outline</source>
        <translation>die Leiterplatte gibt keinen Umriss an</translation>
    </message>
    <message>
        <source>the board specifies no thickness</source>
        <translation>die Leiterplatte gibt keine Dicke an</translation>
    </message>
    <message>
        <source>depth of layer %1</source>
        <translation>Tiefe der Lage %1</translation>
    </message>
    <message>
        <source>the board does not specify all tolerances</source>
        <translation>die Leiterplatte gibt nicht alle Toleranzen an</translation>
    </message>
    <message>
        <source>files with drill sizes specify no finished sizes</source>
        <translation>Dateien mit Bohrmaßen geben keine Endmaße an</translation>
    </message>
    <message>
        <source>the shop has no limit</source>
        <translation>der Betrieb hat keine Grenze</translation>
    </message>
    <message>
        <source>as-drilled</source>
        <translation>wie gebohrt</translation>
    </message>
    <message>
        <source>merged</source>
        <translation>zusammengelegt</translation>
    </message>
    <message>
        <source>: no object</source>
        <translation>: kein Objekt</translation>
    </message>
    <message>
        <source>%1: no number above 0, up to 1000</source>
        <translation>%1: keine Zahl über 0 bis 1000</translation>
    </message>
    <message>
        <source>not checked: %1 (%2)</source>
        <translation>nicht geprüft: %1 (%2)</translation>
    </message>
    <message>
        <source>hits of a tool at places that it has been to: %1 (drilled once)</source>
        <translation>Hübe eines Werkzeugs an Stellen, an denen es schon war: %1 (einmal gebohrt)</translation>
    </message>
    <message>
        <source>(was %1)</source>
        <translation>(statt %1)</translation>
    </message>
    <message>
        <source>Finding</source>
        <translation>Befund</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>Id</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>None.</source>
        <translation>Keine.</translation>
    </message>
    <message>
        <source>Accepted findings</source>
        <translation>Angenommene Befunde</translation>
    </message>
    <message>
        <source>Reason</source>
        <translation>Grund</translation>
    </message>
    <message>
        <source>Until</source>
        <translation>Bis</translation>
    </message>
    <message>
        <source>mirrored</source>
        <translation>gespiegelt</translation>
    </message>
    <message>
        <source>quarter turn</source>
        <translation>Vierteldrehung</translation>
    </message>
    <message>
        <source>half turn</source>
        <translation>halbe Drehung</translation>
    </message>
    <message>
        <source>whole</source>
        <translation>alles</translation>
    </message>
    <message>
        <source>added</source>
        <translation>hinzugekommen</translation>
    </message>
    <message>
        <source>removed</source>
        <translation>entfallen</translation>
    </message>
    <message>
        <source>moved</source>
        <translation>verschoben</translation>
    </message>
    <message>
        <source>resized</source>
        <translation>andere Größe</translation>
    </message>
    <message>
        <source>plating</source>
        <translation>Metallisierung</translation>
    </message>
    <message>
        <source>tolerance</source>
        <translation>Toleranz</translation>
    </message>
    <message>
        <source>layer</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>added: %1 (plus)</source>
        <translation>hinzugekommen: %1 (Plus)</translation>
    </message>
    <message>
        <source>removed: %1 (cross)</source>
        <translation>entfallen: %1 (Kreuz)</translation>
    </message>
    <message>
        <source>moved: %1 (line)</source>
        <translation>verschoben: %1 (Linie)</translation>
    </message>
    <message>
        <source>slot %1 wide, %2</source>
        <translation>Langloch %1 breit, %2</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 zu %2</translation>
    </message>
    <message>
        <source>by %1</source>
        <translation>um %1</translation>
    </message>
    <message>
        <source>by up to %1</source>
        <translation>um bis zu %1</translation>
    </message>
    <message>
        <source>length %1</source>
        <translation>Länge %1</translation>
    </message>
    <message>
        <source>factor</source>
        <translation>Faktor</translation>
    </message>
    <message>
        <source>%1, counter-clockwise</source>
        <translation>%1 gegen den Uhrzeigersinn</translation>
    </message>
    <message>
        <source>%1, clockwise</source>
        <translation>%1 im Uhrzeigersinn</translation>
    </message>
    <message>
        <source>%1 slot</source>
        <translation>%1 Langloch</translation>
    </message>
    <message>
        <source>%1 slots</source>
        <translation>%1 Langlöcher</translation>
    </message>
    <message>
        <source>%1 hole</source>
        <translation>%1 Loch</translation>
    </message>
    <message>
        <source>%1 holes</source>
        <translation>%1 Löcher</translation>
    </message>
    <message>
        <source>all %1</source>
        <translation>alle %1</translation>
    </message>
    <message>
        <source>%1: %2 in %3, %4; at %5</source>
        <translation>%1: %2 in %3, %4; bei %5</translation>
    </message>
    <message>
        <source>%1 is %2 copies of the board</source>
        <translation>%1 besteht aus %2 Kopien der Leiterplatte</translation>
    </message>
    <message>
        <source>the board is %2 copies of %1</source>
        <translation>Die Leiterplatte besteht aus %2 Kopien von %1</translation>
    </message>
    <message>
        <source>, turned or mirrored: %1</source>
        <translation>, gedreht oder gespiegelt: %1</translation>
    </message>
    <message>
        <source>places are those of %1</source>
        <translation>Die Orte sind die von %1</translation>
    </message>
    <message>
        <source>moved by %1</source>
        <translation>verschoben um %1</translation>
    </message>
    <message>
        <source>all but a few holes would be explained by: %1</source>
        <translation>Bis auf wenige Löcher wäre alles erklärt durch: %1</translation>
    </message>
    <message>
        <source>differences: %1 (%2)</source>
        <translation>Unterschiede: %1 (%2)</translation>
    </message>
    <message>
        <source>Compared with %1: %2</source>
        <translation>Verglichen mit %1: %2</translation>
    </message>
    <message>
        <source>Compared with %1</source>
        <translation>Verglichen mit %1</translation>
    </message>
    <message>
        <source>First X</source>
        <translation>Erstes X</translation>
    </message>
    <message>
        <source>First Y</source>
        <translation>Erstes Y</translation>
    </message>
    <message>
        <source>Detail</source>
        <translation>Einzelheiten</translation>
    </message>
    <message>
        <source>drill files agree with %1</source>
        <translation>Die Bohrdateien stimmen mit %1 überein</translation>
    </message>
    <message>
        <source>drill files against %1: %2</source>
        <translation>Bohrdateien gegen %1: %2</translation>
    </message>
    <message>
        <source>drill files are not compared: %1</source>
        <translation>Die Bohrdateien werden nicht verglichen: %1</translation>
    </message>
    <message>
        <source>dots: holes too close for symbols</source>
        <translation>Punkte: zu eng für Symbole</translation>
    </message>
    <message>
        <source>%1 %2, scale %3</source>
        <translation>%1 %2, Maßstab %3</translation>
    </message>
    <message>
        <source>holes within %1 x %2 %3 from %4, %5</source>
        <translation>Bohrungen innerhalb von %1 x %2 %3 ab %4, %5</translation>
    </message>
    <message>
        <source>%1 x %2 %3 from %4, %5</source>
        <translation>%1 x %2 %3 ab %4, %5</translation>
    </message>
    <message>
        <source>File %1; extent %2; written on %3 by %4</source>
        <translation>Datei %1; Ausdehnung %2; geschrieben am %3 von %4</translation>
    </message>
    <message>
        <source>contours, not drilled: %L1</source>
        <translation>Konturen, nicht gebohrt: %L1</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Extent</source>
        <translation>Ausdehnung</translation>
    </message>
    <message>
        <source>Written on</source>
        <translation>Geschrieben am</translation>
    </message>
    <message>
        <source>%1: %L2 more, not in this report</source>
        <translation>%1: %L2 weitere, nicht in diesem Bericht</translation>
    </message>
    <message>
        <source>%1%2: %3 where the board specifies no tolerance</source>
        <translation>%1%2: %3, wo die Leiterplatte keine Toleranz angibt</translation>
    </message>
    <message>
        <source>plated up to %1 mm: vias where the board does not distinguish them</source>
        <translation>metallisiert bis %1 mm: Vias, wo die Leiterplatte sie nicht unterscheidet</translation>
    </message>
    <message>
        <source>layer &quot;%1&quot;: the board specifies no size of T%2, &quot;%3&quot;</source>
        <translation>Lage „%1“: die Leiterplatte gibt kein Maß von T%2 an, „%3“</translation>
    </message>
    <message>
        <source>same-place</source>
        <translation>gleiche Stelle</translation>
    </message>
    <message>
        <source>overlap</source>
        <translation>Überlappung</translation>
    </message>
    <message>
        <source>too-near</source>
        <translation>Abstand</translation>
    </message>
    <message>
        <source>outside</source>
        <translation>außerhalb</translation>
    </message>
    <message>
        <source>edge</source>
        <translation>Randabstand</translation>
    </message>
    <message>
        <source>too-large</source>
        <translation>Bohrergröße</translation>
    </message>
    <message>
        <source>short-slot</source>
        <translation>Langlochlänge</translation>
    </message>
    <message>
        <source>aspect</source>
        <translation>Aspektverhältnis</translation>
    </message>
    <message>
        <source>window</source>
        <translation>Toleranzbereich</translation>
    </message>
    <message>
        <source>closing</source>
        <translation>Verengung</translation>
    </message>
    <message>
        <source>count</source>
        <translation>Hubzahl</translation>
    </message>
    <message>
        <source>scale</source>
        <translation>Maßstab</translation>
    </message>
    <message>
        <source>the image can&apos;t be made</source>
        <translation>das Bild lässt sich nicht erzeugen</translation>
    </message>
    <message>
        <source>beside the copies: %1, first at %2</source>
        <translation>neben den Kopien: %1, zuerst bei %2</translation>
    </message>
    <message>
        <source>drill sizes of one board are compared with finished sizes: %1</source>
        <translation>Bohrmaße der einen Leiterplatte sind mit Endmaßen der anderen verglichen: %1</translation>
    </message>
    <message>
        <source>plating not compared, as one board does not specify it: %1</source>
        <translation>Metallisierung nicht verglichen, da eine der Leiterplatten sie nicht angibt: %1</translation>
    </message>
    <message>
        <source>no difference: %1, %2</source>
        <translation>kein Unterschied: %1, %2</translation>
    </message>
</context>
<context>
    <name>Question</name>
    <message>
        <source>brox workbench</source>
        <translation>brox-Workbench</translation>
    </message>
</context>
<context>
    <name>ReadySet</name>
    <message>
        <source>no header such as designation,mm,inch,approved</source>
        <translation>keine Kopfzeile wie designation,mm,inch,approved</translation>
    </message>
    <message>
        <source>the columns designation and mm or inch are needed</source>
        <translation>die Spalten designation und mm oder inch müssen da sein</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no size from 0 to %2 %3</source>
        <translation>„%1“ ist keine Größe von 0 bis %2 %3</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither yes nor no</source>
        <translation>„%1“ ist weder yes noch no</translation>
    </message>
    <message>
        <source>more cells than the header has</source>
        <translation>mehr Felder als in der Kopfzeile</translation>
    </message>
    <message>
        <source>a bit without a size</source>
        <translation>ein Bohrer ohne Größe</translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) without a designation</source>
        <translation>
            <numerusform>%n Bohrer ohne Bezeichnung</numerusform>
            <numerusform>%n Bohrer ohne Bezeichnung</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) without a size, which no job uses</source>
        <translation>
            <numerusform>%n Bohrer ohne Größe, den kein Auftrag verwendet</numerusform>
            <numerusform>%n Bohrer ohne Größe, die kein Auftrag verwendet</numerusform>
        </translation>
    </message>
    <message>
        <source>Metric and number drills (as delivered)</source>
        <translation>Metrische und Nummernbohrer (wie geliefert)</translation>
    </message>
    <message>
        <source>Metric, 0.10 to 6.50 mm in steps of 0.05 mm</source>
        <translation>Metrisch, 0,10 bis 6,50 mm in Schritten von 0,05 mm</translation>
    </message>
    <message>
        <source>Number and letter drills (#80 to Z)</source>
        <translation>Nummern- und Buchstabenbohrer (#80 bis Z)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is an unknown or repeated column; there are: %2</source>
        <translation>„%1“ ist eine unbekannte oder doppelte Spalte; es gibt: %2</translation>
    </message>
    <message numerus="yes">
        <source>%n bits have the designation %1</source>
        <translation>
            <numerusform>%n Bohrer hat die Bezeichnung %1</numerusform>
            <numerusform>%n Bohrer haben die Bezeichnung %1</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is longer than the %2 characters that a host takes</source>
        <translation>%1 ist länger als die %2 Zeichen, die ein Host annimmt</translation>
    </message>
</context>
<context>
    <name>RecentBoards</name>
    <message numerus="yes">
        <source>%1 and %n more file(s)</source>
        <translation>
            <numerusform>%1 und %n weitere Datei</numerusform>
            <numerusform>%1 und %n weitere Dateien</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Shortcuts</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>Command</source>
        <translation>Befehl</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Tables</source>
        <translation>Tabellen</translation>
    </message>
    <message>
        <source>Copy the selected cells</source>
        <translation>Gewählte Zellen kopieren</translation>
    </message>
    <message>
        <source>Select all cells</source>
        <translation>Alle Zellen wählen</translation>
    </message>
    <message>
        <source>Filter rows</source>
        <translation>Zeilen filtern</translation>
    </message>
    <message>
        <source>Edit a cell, rename a model</source>
        <translation>Zelle bearbeiten, Modell umbenennen</translation>
    </message>
    <message>
        <source>Another type for a tool</source>
        <translation>Anderer Typ für ein Werkzeug</translation>
    </message>
    <message>
        <source>Drill Map</source>
        <translation>Bohrplan</translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation>Vergrößern und verkleinern</translation>
    </message>
    <message>
        <source>Pan</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Show all of the board</source>
        <translation>Die ganze Leiterplatte zeigen</translation>
    </message>
    <message>
        <source>Drill Size Table Editor</source>
        <translation>Bohrertabelle</translation>
    </message>
    <message>
        <source>Add a bit</source>
        <translation>Bohrer hinzufügen</translation>
    </message>
    <message>
        <source>Delete the bit</source>
        <translation>Bohrer löschen</translation>
    </message>
    <message>
        <source>Save the bits</source>
        <translation>Bohrer speichern</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>UserGuide</name>
    <message>
        <source>brox user guide</source>
        <translation>brox-Benutzerhandbuch</translation>
    </message>
</context>
<context>
    <name>brox::BitsMenu</name>
    <message>
        <source>Drill &amp;Bits</source>
        <translation>&amp;Bohrer</translation>
    </message>
    <message>
        <source>&amp;Import...</source>
        <translation>&amp;Einlesen …</translation>
    </message>
    <message>
        <source>&amp;Export...</source>
        <translation>E&amp;xportieren …</translation>
    </message>
    <message>
        <source>&amp;Ready Sets</source>
        <translation>&amp;Fertige Sätze</translation>
    </message>
    <message>
        <source>Import Drill Bits</source>
        <translation>Bohrer einlesen</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv);;All files (*)</source>
        <translation>Durch Kommas getrennte Werte (*.csv);;Alle Dateien (*)</translation>
    </message>
    <message numerus="yes">
        <source>The table has %n bit(s) now.</source>
        <translation>
            <numerusform>Die Tabelle hat jetzt %n Bohrer.</numerusform>
            <numerusform>Die Tabelle hat jetzt %n Bohrer.</numerusform>
        </translation>
    </message>
    <message>
        <source>Replace</source>
        <translation>Ersetzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) imported</source>
        <translation>
            <numerusform>%n Bohrer eingelesen</numerusform>
            <numerusform>%n Bohrer eingelesen</numerusform>
        </translation>
    </message>
    <message>
        <source>Export Drill Bits</source>
        <translation>Bohrer exportieren</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv)</source>
        <translation>Durch Kommas getrennte Werte (*.csv)</translation>
    </message>
    <message>
        <source>Drill bits exported, as they were saved last: %1</source>
        <translation>Bohrer exportiert, wie sie zuletzt gespeichert wurden: %1</translation>
    </message>
    <message>
        <source>The current bits are kept as a backup.</source>
        <translation>Die jetzigen Bohrer bleiben als Sicherung erhalten.</translation>
    </message>
    <message numerus="yes">
        <source>%n bit(s) will replace the table of bits.</source>
        <translation>
            <numerusform>%n Bohrer ersetzt die Bohrertabelle.</numerusform>
            <numerusform>%n Bohrer ersetzen die Bohrertabelle.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::BoardLinks</name>
    <message>
        <source>Recent boards</source>
        <translation>Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>Samples</source>
        <translation>Beispiele</translation>
    </message>
</context>
<context>
    <name>brox::DataGuard</name>
    <message>
        <source>Overwrite</source>
        <translation>Überschreiben</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>%1 can&apos;t be read: %2</source>
        <translation>%1 kann nicht gelesen werden: %2</translation>
    </message>
    <message>
        <source>%1 has changed since step %2 read it: another step or another program has saved it.</source>
        <translation>%1 ist anders, als Step %2 es gelesen hat: Ein anderer Step oder ein anderes Programm hat es gespeichert.</translation>
    </message>
    <message>
        <source>No backup of %1 could be made: %2</source>
        <translation>Von %1 konnte keine Sicherung angelegt werden: %2</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Save Again</source>
        <translation>Nochmals speichern</translation>
    </message>
    <message>
        <source>%1 could not be saved: %2</source>
        <translation>%1 konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Discard</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Unsaved data will be lost.</source>
        <translation>Ungespeicherte Daten gehen verloren.</translation>
    </message>
    <message>
        <source>Nothing could be saved: %1</source>
        <translation>Es konnte nichts gespeichert werden: %1</translation>
    </message>
    <message>
        <source>it was not saved before</source>
        <translation>es war zuvor nicht gespeichert</translation>
    </message>
    <message>
        <source>Another workbench is saving to %1.</source>
        <translation>Eine andere Workbench speichert gerade in %1.</translation>
    </message>
    <message>
        <source>Cancel: nothing is saved.</source>
        <translation>Abbrechen: Nichts wird gespeichert.</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>The changes could not be kept: %1</source>
        <translation>Die Änderungen konnten nicht aufbewahrt werden: %1</translation>
    </message>
    <message>
        <source>it could not be written completely to %1 (%2)</source>
        <translation>sie konnte nicht vollständig nach %1 geschrieben werden (%2)</translation>
    </message>
    <message>
        <source>Overwrite: the present content is kept as a backup.
Keep: nothing is saved.</source>
        <translation>Überschreiben: Der jetzige Inhalt bleibt als Sicherung erhalten.
Behalten: Nichts wird gespeichert.</translation>
    </message>
    <message>
        <source>Save: if the computer fails meanwhile, the file may be lost.
Cancel: nothing is saved.</source>
        <translation>Speichern: Fällt der Rechner währenddessen aus, kann die Datei verloren sein.
Abbrechen: Nichts wird gespeichert.</translation>
    </message>
    <message>
        <source>The file is as it was. Your changes are still unsaved.</source>
        <translation>Die Datei ist, wie sie war. Ihre Änderungen sind noch ungespeichert.</translation>
    </message>
</context>
<context>
    <name>brox::ErrorBar</name>
    <message>
        <source>Click to dismiss; the log keeps it.</source>
        <translation>Klick blendet die Meldung aus; im Protokoll bleibt sie.</translation>
    </message>
</context>
<context>
    <name>brox::ExportMenu</name>
    <message>
        <source>&amp;Export</source>
        <translation>&amp;Exportieren</translation>
    </message>
    <message>
        <source>&amp;Drill Programs...</source>
        <translation>&amp;Bohrprogramme …</translation>
    </message>
    <message>
        <source>&amp;Report...</source>
        <translation>Be&amp;richt …</translation>
    </message>
    <message>
        <source>Export Report</source>
        <translation>Bericht exportieren</translation>
    </message>
    <message>
        <source>HTML (*.html);;PDF (*.pdf)</source>
        <translation>HTML (*.html);;PDF (*.pdf)</translation>
    </message>
    <message>
        <source>&amp;Map...</source>
        <translation>Bohr&amp;plan …</translation>
    </message>
    <message>
        <source>Export Map</source>
        <translation>Bohrplan exportieren</translation>
    </message>
    <message>
        <source>SVG (*.svg);;PDF (*.pdf);;PNG (*.png)</source>
        <translation>SVG (*.svg);;PDF (*.pdf);;PNG (*.png)</translation>
    </message>
    <message>
        <source>&amp;Table...</source>
        <translation>&amp;Tabelle …</translation>
    </message>
    <message>
        <source>Export Table</source>
        <translation>Tabelle exportieren</translation>
    </message>
    <message>
        <source>Comma-separated values (*.csv);;JSON (*.json);;Text (*.txt)</source>
        <translation>Durch Kommas getrennt (*.csv);;JSON (*.json);;Text (*.txt)</translation>
    </message>
    <message>
        <source>Export Drill Programs</source>
        <translation>Bohrprogramme exportieren</translation>
    </message>
    <message>
        <source>Writing %1</source>
        <translation>%1 wird geschrieben</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1: a table is written as .csv, .json or .txt</source>
        <translation>%1: eine Tabelle wird als .csv, .json oder .txt geschrieben</translation>
    </message>
    <message>
        <source>&amp;All into a Folder...</source>
        <translation>&amp;Alles in einen Ordner …</translation>
    </message>
    <message>
        <source>Export Drill Programs, Report, Map and Table</source>
        <translation>Bohrprogramme, Bericht, Bohrplan und Tabelle exportieren</translation>
    </message>
    <message>
        <source> (models and bits: %1)</source>
        <translation> (Modelle und Bohrer: %1)</translation>
    </message>
    <message numerus="yes">
        <source> (%n row(s) to check)</source>
        <translation>
            <numerusform> (%n Zeile zu prüfen)</numerusform>
            <numerusform> (%n Zeilen zu prüfen)</numerusform>
        </translation>
    </message>
    <message>
        <source>Overwrite</source>
        <translation>Überschreiben</translation>
    </message>
    <message>
        <source>%1 holds programs of an earlier export of this board and step that this one no longer has. Remove them?</source>
        <translation>%1 enthält Programme eines früheren Exports dieser Leiterplatte und dieses Steps, die es in diesem nicht mehr gibt. Entfernen?</translation>
    </message>
    <message>
        <source>Fewest &amp;tools</source>
        <translation>Wenigste &amp;Werkzeuge</translation>
    </message>
    <message>
        <source>Holes share bits within their tolerances.</source>
        <translation>Bohrungen teilen sich Bohrer, soweit ihre Toleranzen es erlauben.</translation>
    </message>
    <message>
        <source>Export cancelled: nothing was written to %1</source>
        <translation>Export abgebrochen: nach %1 wurde nichts geschrieben</translation>
    </message>
    <message>
        <source>%1 already holds some of these files.</source>
        <translation>%1 enthält schon einige dieser Dateien.</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Keep</source>
        <translation>Behalten</translation>
    </message>
    <message>
        <source>Written with model %1: %2</source>
        <translation>Mit Modell %1 geschrieben: %2</translation>
    </message>
    <message numerus="yes">
        <source> (%n tool(s) instead of %1)</source>
        <translation>
            <numerusform> (%n Werkzeug statt %1)</numerusform>
            <numerusform> (%n Werkzeuge statt %1)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::FindingsDock</name>
    <message>
        <source>Findings</source>
        <translation>Befunde</translation>
    </message>
    <message>
        <source>Finding</source>
        <translation>Befund</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>Place</source>
        <translation>Stelle</translation>
    </message>
    <message>
        <source>Measured</source>
        <translation>Gemessen</translation>
    </message>
    <message>
        <source>Limit</source>
        <translation>Grenze</translation>
    </message>
    <message>
        <source>no findings</source>
        <translation>keine Befunde</translation>
    </message>
    <message>
        <source>must not be drilled</source>
        <translation>darf nicht gebohrt werden</translation>
    </message>
    <message>
        <source>accepted until %1: %2</source>
        <translation>angenommen bis %1: %2</translation>
    </message>
    <message>
        <source>; %1: %2</source>
        <translation>; %1: %2</translation>
    </message>
    <message>
        <source>Compared with %1: %2</source>
        <translation>Verglichen mit %1: %2</translation>
    </message>
    <message>
        <source>ID</source>
        <translation>Kennung</translation>
    </message>
    <message numerus="yes">
        <source>%Ln finding(s)</source>
        <translation>
            <numerusform>%Ln Befund</numerusform>
            <numerusform>%Ln Befunde</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source> (%Ln hard)</source>
        <translation>
            <numerusform> (%Ln ernster)</numerusform>
            <numerusform> (%Ln ernste)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>brox::HostSession</name>
    <message>
        <source>the library can&apos;t %1: status %2</source>
        <translation>Die Bibliothek meldet Status %2 (%1)</translation>
    </message>
    <message>
        <source>no model &quot;%1&quot;; there are no models</source>
        <translation>kein Modell „%1“; es gibt keine Modelle</translation>
    </message>
    <message>
        <source>the viewer has no %1</source>
        <translation>der Viewer hat kein %1</translation>
    </message>
    <message>
        <source>no model &quot;%1&quot;; %2</source>
        <translation>kein Modell „%1“; %2</translation>
    </message>
    <message>
        <source>no language &quot;%1&quot;; %2</source>
        <translation>keine Sprache „%1“; %2</translation>
    </message>
    <message>
        <source> copy</source>
        <translation> Kopie</translation>
    </message>
    <message>
        <source> copy %1</source>
        <translation> Kopie %1</translation>
    </message>
    <message>
        <source>no model could be added</source>
        <translation>es konnte kein Modell angelegt werden</translation>
    </message>
    <message>
        <source>no step &quot;%1&quot;; %2</source>
        <translation>kein Step „%1“; %2</translation>
    </message>
    <message>
        <source>step %1: what is unsaved can&apos;t be kept; save or discard it first</source>
        <translation>Step %1: Ungespeichertes lässt sich nicht übernehmen; speichern oder verwerfen Sie es zuerst</translation>
    </message>
</context>
<context>
    <name>brox::JobTable</name>
    <message>
        <source>The board does not specify the type.</source>
        <translation>Die Leiterplatte gibt die Art nicht an.</translation>
    </message>
    <message>
        <source>As &amp;Specified by the Board</source>
        <translation>Wie von der &amp;Leiterplatte angegeben</translation>
    </message>
</context>
<context>
    <name>brox::LogDock</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
</context>
<context>
    <name>brox::MainWindow</name>
    <message>
        <source>Step %1: model &quot;%2&quot; is now &quot;%3&quot;</source>
        <translation>Step %1: Das Modell „%2“ heißt jetzt „%3“</translation>
    </message>
    <message>
        <source>Step %1: model &quot;%2&quot; is deleted</source>
        <translation>Step %1: Das Modell „%2“ ist gelöscht</translation>
    </message>
    <message>
        <source>%1 saved</source>
        <translation>%1 gespeichert</translation>
    </message>
    <message>
        <source>brox workbench</source>
        <translation>brox-Workbench</translation>
    </message>
    <message>
        <source>%1[*] - brox workbench</source>
        <translation>%1[*] – brox-Workbench</translation>
    </message>
    <message>
        <source>&amp;Step</source>
        <translation>&amp;Step</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Ansicht</translation>
    </message>
    <message>
        <source>&amp;Log</source>
        <translation>&amp;Protokoll</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open Board...</source>
        <translation>Leiterplatte ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open &amp;Recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Close Step</source>
        <translation>Step s&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>Bee&amp;nden</translation>
    </message>
    <message>
        <source>&amp;Units</source>
        <translation>&amp;Einheit</translation>
    </message>
    <message>
        <source>&amp;Inch (mils)</source>
        <translation>&amp;Zoll (Mil)</translation>
    </message>
    <message>
        <source>&amp;Metric (microns)</source>
        <translation>&amp;Metrisch (Mikrometer)</translation>
    </message>
    <message>
        <source>&amp;Next Tab</source>
        <translation>&amp;Nächste Karteikarte</translation>
    </message>
    <message>
        <source>&amp;Previous Tab</source>
        <translation>&amp;Vorige Karteikarte</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;User Guide</source>
        <translation>&amp;Benutzerhandbuch (englisch)</translation>
    </message>
    <message>
        <source>&amp;About brox workbench</source>
        <translation>&amp;Über brox-Workbench</translation>
    </message>
    <message>
        <source>About brox workbench</source>
        <translation>Über brox-Workbench</translation>
    </message>
    <message>
        <source>&lt;h3&gt;brox workbench %1&lt;/h3&gt;&lt;p&gt;Sets up the drill tools of printed-circuit boards: finished hole sizes become drill sizes, by models of the plating and a table of bits.&lt;/p&gt;&lt;p&gt;MIT licence. Models and bits are in&lt;br&gt;%2&lt;/p&gt;</source>
        <translation>&lt;h3&gt;brox-Workbench %1&lt;/h3&gt;&lt;p&gt;Richtet die Bohrwerkzeuge von Leiterplatten ein: Aus Endmaßen von Löchern werden Bohrmaße, nach Modellen der Metallisierung und einer Tabelle der Bohrer.&lt;/p&gt;&lt;p&gt;MIT-Lizenz. Modelle und Bohrer liegen in&lt;br&gt;%2&lt;/p&gt;</translation>
    </message>
    <message>
        <source>&amp;Drill Map</source>
        <translation>&amp;Bohrplan</translation>
    </message>
    <message>
        <source>Shop R&amp;ules...</source>
        <translation>&amp;Regeln des Betriebs …</translation>
    </message>
    <message>
        <source>Goes to the next row to check.</source>
        <translation>Geht zur nächsten Zeile, die zu prüfen ist.</translation>
    </message>
    <message>
        <source>Models or bits were saved by others; read again: %1</source>
        <translation>Modelle oder Bohrer wurden von anderer Seite gespeichert; neu gelesen: %1</translation>
    </message>
    <message>
        <source>Models or bits have been saved by another step or program since this step read them. What is calculated here is older than the files.</source>
        <translation>Modelle oder Bohrer sind von einem anderen Step oder Programm gespeichert worden, seit dieser Step sie gelesen hat. Was hier berechnet wird, ist älter als die Dateien.</translation>
    </message>
    <message>
        <source>Read Again...</source>
        <translation>Neu lesen …</translation>
    </message>
    <message>
        <source>&amp;Recalculate</source>
        <translation>&amp;Neu berechnen</translation>
    </message>
    <message>
        <source>Open &amp;Folder...</source>
        <translation>&amp;Ordner öffnen …</translation>
    </message>
    <message>
        <source>&amp;Save Models</source>
        <translation>Modelle &amp;speichern</translation>
    </message>
    <message>
        <source>&amp;Duplicate Model</source>
        <translation>Modell &amp;duplizieren</translation>
    </message>
    <message>
        <source>For&amp;get Choices for This Board</source>
        <translation>Auswahl für diese Leiterplatte ver&amp;gessen</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts...</source>
        <translation>&amp;Tastenkürzel …</translation>
    </message>
    <message>
        <source>%1; nothing is exported until the rules of the shop can be read</source>
        <translation>%1; nichts wird exportiert, bis die Regeln des Betriebs lesbar sind</translation>
    </message>
    <message>
        <source>%1 could not be saved: %2</source>
        <translation>%1 konnte nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>&amp;Findings</source>
        <translation>Be&amp;funde</translation>
    </message>
    <message>
        <source>%1 is restored</source>
        <translation>%1 ist wiederhergestellt</translation>
    </message>
    <message>
        <source>Step %1: %2, %3, %4</source>
        <translation>Step %1: %2, %3, %4</translation>
    </message>
    <message numerus="yes">
        <source>%Ln tool(s)</source>
        <translation>
            <numerusform>%Ln Werkzeug</numerusform>
            <numerusform>%Ln Werkzeuge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln hole(s)</source>
        <translation>
            <numerusform>%Ln Bohrung</numerusform>
            <numerusform>%Ln Bohrungen</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln slot(s)</source>
        <translation>
            <numerusform>%Ln Langloch</numerusform>
            <numerusform>%Ln Langlöcher</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln row(s) to check</source>
        <translation>
            <numerusform>%Ln Zeile zu prüfen</numerusform>
            <numerusform>%Ln Zeilen zu prüfen</numerusform>
        </translation>
    </message>
    <message>
        <source>The rules of the shop were saved by others; read again</source>
        <translation>Die Regeln des Betriebs wurden von anderer Seite gespeichert; neu gelesen</translation>
    </message>
    <message>
        <source>Open Board</source>
        <translation>Leiterplatte öffnen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
    <message>
        <source>Shows the findings.</source>
        <translation>Zeigt die Befunde.</translation>
    </message>
    <message>
        <source>Restore...</source>
        <translation>Wiederherstellen …</translation>
    </message>
    <message>
        <source>Restore Bac&amp;kup or Defaults...</source>
        <translation>S&amp;icherung oder Standard wiederherstellen …</translation>
    </message>
    <message>
        <source>Co&amp;mpare With</source>
        <translation>&amp;Vergleichen mit</translation>
    </message>
    <message>
        <source>&amp;Board...</source>
        <translation>&amp;Leiterplatte …</translation>
    </message>
    <message>
        <source>Compare With</source>
        <translation>Vergleichen mit</translation>
    </message>
    <message>
        <source>&amp;Folder...</source>
        <translation>&amp;Ordner …</translation>
    </message>
    <message>
        <source>&amp;End Comparison</source>
        <translation>Vergleich &amp;beenden</translation>
    </message>
    <message>
        <source>Choose a step of the board from the Step menu.</source>
        <translation>Wählen Sie im Menü „Step“ einen Step der Leiterplatte.</translation>
    </message>
    <message>
        <source>Takes back the types, drill sizes, models and units that were chosen.</source>
        <translation>Nimmt gewählte Arten, Bohrmaße, Modelle und Einheiten zurück.</translation>
    </message>
    <message>
        <source>Open a board to set up its drill tools, or drop its files here.</source>
        <translation>Öffnen Sie eine Leiterplatte, um ihre Bohrwerkzeuge einzurichten, oder ziehen Sie ihre Dateien hierher.</translation>
    </message>
    <message>
        <source>Open Board...</source>
        <translation>Leiterplatte öffnen …</translation>
    </message>
    <message>
        <source>Open Folder...</source>
        <translation>Ordner öffnen …</translation>
    </message>
</context>
<context>
    <name>brox::MapDock</name>
    <message>
        <source>Drill map</source>
        <translation>Bohrplan</translation>
    </message>
    <message>
        <source>Layers and tools on the map</source>
        <translation>Lagen und Werkzeuge des Bohrplans</translation>
    </message>
    <message>
        <source>Layer, tool</source>
        <translation>Lage, Werkzeug</translation>
    </message>
    <message>
        <source>Bit</source>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>DHS</source>
        <translation>Bohrmaß</translation>
    </message>
    <message>
        <source>Count</source>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>Click a hole to see what drills it.</source>
        <translation>Ein Klick auf eine Bohrung zeigt ihr Werkzeug.</translation>
    </message>
    <message>
        <source>%1
at X %2, Y %3</source>
        <translation>%1
bei X %2, Y %3</translation>
    </message>
    <message>
        <source>inch</source>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>mm</source>
        <translation>mm</translation>
    </message>
    <message>
        <source>no drill size</source>
        <translation>kein Bohrmaß</translation>
    </message>
    <message>
        <source>no bit</source>
        <translation>kein Bohrer</translation>
    </message>
    <message>
        <source>bit %1</source>
        <translation>Bohrer %1</translation>
    </message>
    <message>
        <source>Fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <source>Shows all of the board (Home)</source>
        <translation>Zeigt die ganze Leiterplatte (Pos1)</translation>
    </message>
    <message>
        <source>Holes to check have amber rings, findings red ones.</source>
        <translation>Zu prüfende Bohrungen haben orange Ringe, Befunde rote.</translation>
    </message>
    <message>
        <source>These Are &amp;Drill Sizes</source>
        <translation>Das sind &amp;Bohrmaße</translation>
    </message>
    <message>
        <source>DHS [%1]</source>
        <translation>Bohrmaß [%1]</translation>
    </message>
    <message>
        <source>finished %1 +%2 -%3 %4</source>
        <translation>Endmaß %1 +%2 -%3 %4</translation>
    </message>
    <message>
        <source>drill %1 %2</source>
        <translation>Bohrmaß %1 %2</translation>
    </message>
    <message>
        <source>instead of %1</source>
        <translation>statt %1</translation>
    </message>
</context>
<context>
    <name>brox::RestoreDialog</name>
    <message>
        <source>Backups</source>
        <translation>Sicherungen</translation>
    </message>
    <message>
        <source>Saved</source>
        <translation>Gespeichert</translation>
    </message>
    <message>
        <source>Content</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>Bits</source>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>Shop rules</source>
        <translation>Regeln des Betriebs</translation>
    </message>
    <message>
        <source>Defaults</source>
        <translation>Standard</translation>
    </message>
    <message>
        <source>%1 can&apos;t be restored: %2</source>
        <translation>%1 kann nicht wiederhergestellt werden: %2</translation>
    </message>
    <message>
        <source>Restore Backup or Defaults</source>
        <translation>Sicherung oder Standard wiederherstellen</translation>
    </message>
    <message>
        <source>The content that you choose replaces its file. What the file holds now is kept as a backup.</source>
        <translation>Der gewählte Inhalt ersetzt seine Datei. Was die Datei jetzt enthält, bleibt als Sicherung erhalten.</translation>
    </message>
</context>
<context>
    <name>brox::RulesDialog</name>
    <message>
        <source>Shop Rules</source>
        <translation>Regeln des Betriebs</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>From size</source>
        <translation>Ab Größe</translation>
    </message>
    <message>
        <source>&amp;Add</source>
        <translation>&amp;Hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>Ent&amp;fernen</translation>
    </message>
    <message>
        <source>never</source>
        <translation>nie</translation>
    </message>
    <message>
        <source>There are two tolerances for one type and size.</source>
        <translation>Für eine Art und Größe gibt es zwei Toleranzen.</translation>
    </message>
    <message>
        <source>&amp;Tolerances of holes and slots for which the board specifies none:</source>
        <translation>&amp;Toleranzen von Bohrungen und Langlöchern, für die die Leiterplatte keine vorgibt:</translation>
    </message>
    <message>
        <source>Tolerances</source>
        <translation>Toleranzen</translation>
    </message>
    <message>
        <source>&amp;Units:</source>
        <translation>&amp;Einheit:</translation>
    </message>
    <message>
        <source>Millimetres</source>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>Mils</source>
        <translation>Mil</translation>
    </message>
    <message>
        <source>&amp;Where the board does not distinguish vias, plated holes are vias up to:</source>
        <translation>&amp;Wo die Leiterplatte Vias nicht unterscheidet, sind metallisierte Bohrungen Vias bis:</translation>
    </message>
    <message>
        <source>%1 from %2: -%3/+%4</source>
        <translation>%1 ab %2: -%3/+%4</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no size from 0 to 1000 mm; the former size is back.</source>
        <translation>„%1“ ist keine Größe von 0 bis 1000 mm; die bisherige steht wieder da.</translation>
    </message>
    <message numerus="yes">
        <source>%n tolerance(s) are unusually wide.</source>
        <translation>
            <numerusform>%n Toleranz ist ungewöhnlich groß.</numerusform>
            <numerusform>%n Toleranzen sind ungewöhnlich groß.</numerusform>
        </translation>
    </message>
    <message>
        <source>Use Them</source>
        <translation>Verwenden</translation>
    </message>
    <message>
        <source>Go Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Limits of the checks</source>
        <translation>Grenzen der Prüfungen</translation>
    </message>
    <message>
        <source>Hole to &amp;hole:</source>
        <translation>Bohrung zu &amp;Bohrung:</translation>
    </message>
    <message>
        <source>not checked</source>
        <translation>ungeprüft</translation>
    </message>
    <message>
        <source>Hole to board &amp;edge:</source>
        <translation>Bohrung zum &amp;Rand:</translation>
    </message>
    <message>
        <source>Largest &amp;drill:</source>
        <translation>&amp;Größter Bohrer:</translation>
    </message>
    <message>
        <source>Shortest &amp;slot (length by width):</source>
        <translation>&amp;Kürzestes Langloch (Länge zu Breite):</translation>
    </message>
    <message>
        <source>Tolerance range, &amp;plated:</source>
        <translation>Toleranzbereich, &amp;metallisiert:</translation>
    </message>
    <message>
        <source>Tolerance range, press-&amp;fit:</source>
        <translation>Toleranzbereich, E&amp;inpress:</translation>
    </message>
    <message>
        <source>Tolerance range, &amp;non-plated:</source>
        <translation>Toleranzbereich, &amp;nicht metallisiert:</translation>
    </message>
    <message>
        <source>Tolerance range, s&amp;lots:</source>
        <translation>Toleranzbereich, &amp;Langlöcher:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no number from 0 to 1000; the former number is back.</source>
        <translation>„%1“ ist keine Zahl von 0 bis 1000; die bisherige steht wieder da.</translation>
    </message>
    <message>
        <source>Minus tolerance</source>
        <translation>Toleranz minus</translation>
    </message>
    <message>
        <source>Plus tolerance</source>
        <translation>Toleranz plus</translation>
    </message>
    <message>
        <source>Aspect rat&amp;io (thickness by drill):</source>
        <translation>&amp;Aspektverhältnis (Dicke zu Bohrer):</translation>
    </message>
</context>
<context>
    <name>brox::StepTabs</name>
    <message>
        <source>Models</source>
        <translation>Modelle</translation>
    </message>
    <message>
        <source>Amounts by type of hole</source>
        <translation>Zugaben nach Art der Bohrung</translation>
    </message>
    <message>
        <source>Formula of the drill size</source>
        <translation>Formel des Bohrmaßes</translation>
    </message>
    <message>
        <source>Test bench</source>
        <translation>Prüfstand</translation>
    </message>
    <message>
        <source>Drill tools of the step</source>
        <translation>Bohrwerkzeuge des Steps</translation>
    </message>
    <message>
        <source>Drill bits</source>
        <translation>Bohrer</translation>
    </message>
</context>
<context>
    <name>brox::TableFilter</name>
    <message>
        <source>Filter (Ctrl+F)</source>
        <translation>Filter (Strg+F)</translation>
    </message>
    <message>
        <source>Filter rows</source>
        <translation>Zeilen filtern</translation>
    </message>
    <message>
        <source>Shows the rows that hold all of these words.</source>
        <translation>Zeigt die Zeilen, in denen alle diese Wörter stehen.</translation>
    </message>
    <message>
        <source>Only rows to check</source>
        <translation>Nur zu prüfende Zeilen</translation>
    </message>
</context>
</TS>
