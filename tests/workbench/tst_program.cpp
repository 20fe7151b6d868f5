// SPDX-License-Identifier: MIT
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

namespace {

/** With a comma and a quote in its name. */
const char oddBoard[] = R"(; T7 Holesize 1. = 20 Tolerance = +2/-1 PLATED MILS Quantity = 9
M48
;#@! TF.FileFunction,Plated,1,4,PTH
INCH,TZ
;#@! TA.AperFunction,Plated,PTH,ViaDrill
T7C.02
;#@! TA.AperFunction,Plated,PTH,ComponentDrill
T3C.12
;#@! TA.AperFunction,Plated,PTH,BackDrill
T2C.03
%
T7
X1.0Y1.0
T3
X1.0Y1.0G85X1.1
T2
X1.0Y1.0
X2.0Y1.0
M30
)";

/** Half a circle, by a tool of which no file specifies the size. */
const char arc[] = "%\nG90\nT1\nG00X1.0Y1.0\nM15\nG02X2.0Y1.0I0.5J0.0\nM16\nM30\n";

const char noSize[] = R"(noSize() {
    cp -r $D/data $D/n
    sed -i 's/"FHS [^"]*"/"FHS \/ 0"/' $D/n/brox/brox.xml
}
)";

struct Case
{
    const char*
        command; ///< for a shell; $B is the program, $D a folder with data, $O the odd board, and
                 ///< $A an arc of a tool without a size; noSize: the models in $D/n give none
    int status;
    std::vector<const char*> out; ///< what is printed holds these; nothing: it is empty
    const char* error;
};

const Case cases[] = {
    {"$B controller.xml --table", 0,
        {"DRILL_1-6 Via 120 250 50 50 300 0.30", "DRILL_1-2 Via 96 100 0 0 150 0.15",
            "DRILL_1-6 Via 90 300 100 50 300 0.30", "DRILL_NPTH Non-plated 6 3200 50 50 3200 3.20"},
        ""},
    {"$B backplane.xml --csv", 0,
        {"Layer,Type,Count,FHS [mil],-Tol [mil],+Tol [mil],DHS [mil],Bit,Tool,Flags\n",
            "drill_1-4,Via,140,10,0,0,13.78,0.35,1,out-of-tolerance\n",
            "ROUT,Plated slot,3,30,1.5,1.5,33.465,0.85,1,\n"},
        ""},
    {"sed 's/n=\"ROUT/n=\"PLANE/' sensor.xml | $B - --csv", 0, {"Drill,Via,720"},
        "holes left out: 12 (on layers that are not drilled)\n"},
    {"$B $O --csv --units metric", 0, {"\n\"o,\"\"d\",Via,1,508,25.4,50.8,571.5,#74,1,\n"},
        "back drills left out: 2 (the fabricator chooses their tools)\n"
        "$D/o,\"d.drl: holes of T7: 1 where a comment says 9\n"
        "assumed: tolerances (tools: 1)\n"},
    {"cp breakout-NPTH.drl $D/=1.drl; $B $D/=1.drl --csv --units metric; rm $D/=1.drl", 0,
        {"\n'=1,Plated,28,500,100,100,600,"}, "assumed: types (tools: 2), tolerances (tools: 2)\n"},
    {"$B $O --table", 0, {"\n\nback drills left out: 2 (the fabricator chooses their tools)\n"},
        "$D/o,\"d.drl: holes of T7: 1 where a comment says 9\n"
        "assumed: tolerances (tools: 1)\n"},
    {"$B $O --json 2>/dev/null | tr -d ' \\n'", 0,
        {R"({"amount":3.937007874015748,"holeType":"Pth","largeAmount":4.921259842519685,)"
         R"("largeFrom":118.11023622047244})",
            R"("formula":"FHS+AMOUNT+(MAX_TOL-MIN_TOL)/2","job":"o,\"d","layers":[{)"
            R"("assumedFormat":"","backDrills":[{"count":2,"finishedSize":30}],"contours":0,"drillSizes":false,)"
            R"("name":"o,\"d","span":["1","4"]}],"leftOut":["backdrillsleftout:2)",
            R"("model":"ENIG","modelsFile":"saved","notes":[")",
            R"("rows":[{"bit":"#74","count":1,"drillSize":22.5,"fileTool":7,"finishedSize":20,)"
            R"("flags":[],"layer":"o,\"d","minusTolerance":1,"plusTolerance":2,"rule":"",)"
            R"("slots":false,"tool":1,"type":"Via"},)",
            R"("flags":["tolerance-assumed"],"layer":"o,\"d","minusTolerance":3.937007874015748,)"
            R"("plusTolerance":3.937007874015748,"rule":"-0.1/+0.1mmbytheruleforplated",)"
            R"("slots":true,"tool":2,"type":"Platedslot"}],"rules":["plated:-0.1/+0.1mmwhere)",
            R"("step":"pcb","tools":2,"toolsBefore":2,"unit":"mil","unsaved":false,"usesBits":true})"},
        ""},
    {"$B sensor.xml --compare sensor.xml --strict --csv", 0,
        {"Finding,Layer,Tool,Count,X,Y,Detail\n"}, ""},
    {"for i in sensor controller backplane; do"
     " $B $i.xml --model Unplated --drill-programs $D/$i >/dev/null 2>&1;"
     " $B $i.xml --compare $D/$i 2>/dev/null; done;"
     " $B sensor.xml --compare $D/sensor --sizes finished 2>/dev/null | grep -c .",
        0,
        {"drill sizes of one board are compared with finished sizes: 1288 holes\n"
         "no difference: 1276 holes, 12 slots\n",
            "no difference: 767 holes, 6 slots\n", " slots\n1\n"},
        ""},
    {"$B sensor.xml --step board --model Unplated --drill-programs $D/p >/dev/null 2>&1;"
     " $B $D/p --compare sensor.xml 2>/dev/null",
        0, {"sensor is 12 copies of the board\n", "beside the copies: 4 holes", "no difference: "},
        ""},
    {"sed 's/T7C.02/T7C.021/; s/^X1.0Y1.0$/X1.01Y1.0/' $O >$D/b.drl;"
     " $B $O --compare $D/b.drl --compare-within 0.02 --csv --report $D/r.html --map $D/m.svg"
     " 2>/dev/null; s=$?; cat $D/r.html $D/m.svg | sed 's/<[^>]*>/ /g' | tr -s ' \\n' ' '; exit $s",
        3,
        {"Finding,Layer,Tool,Count,X,Y,Detail\nadded,b,7,1,1010,1000,\"21 mil, plated\"\n"
         "removed,\"o,\"\"d\",7,1,1000,1000,\"20 mil, plated\"\n",
            " Compared with b Finding ", " removed o,&quot;d 7 1 1000 1000 20 mil, plated ",
            "Compared with b: added: 1 (plus), removed: 1 (cross)"},
        ""},
    {"sed 's/T7C.02/T7C.021/; s/Plated,1,4/Plated,1,2/' $O | $B $O --compare - --json 2>/dev/null"
     " | tr -d ' \\n'",
        0,
        {R"("comparison":{"copies":1,"differs":true,"findings":[{"count":1,"detail":"20to21mil",)"
         R"("kind":"resized","layer":"o,\"d","places":[[1000,1000]],"tool":7},)",
            R"("kind":"layer",)", R"("moved":[0,0],)", R"("whole":null)"},
        ""},
    {"mkdir $D/a; cp backplane.xml $D/a; $B $D/a --model Unplated --drill-programs $D/a >/dev/null"
     " 2>&1; $B $D/a --csv --strict --model Unplated 2>&1 | grep ^drill.files;"
     " sed -i /^X1/d $D/a/*drill_1-4-plated.drl; $B $D/a --csv --strict --model Unplated"
     " >$D/o 2>&1; s=$?; grep ^drill.files $D/o; exit $s",
        2,
        {"drill files agree with backplane.xml\n", "drill files against backplane.xml: removed: "},
        ""},
    {"$B sensor.xml --compare sensor.xml --compare-within 0.6", 1, {},
        "brox-workbench: no tolerance of places \"0.6\"; it is from 0.001 to 0.5 mm\n"},
    {"SOURCE_DATE_EPOCH=1700000000 $B $O --report $D/r.HTML --map $D/m.svg 2>/dev/null"
     " && cat $D/r.HTML $D/m.svg | tr '\\n' ' ' | sed 's/<[^>]*>/ /g' | tr -s ' '",
        0,
        {"$D/r.HTML\n$D/m.svg\n", " Pth 3.937 118.11 4.921 Via 1.969 &nbsp; &nbsp; Laser ",
            " o,&quot;d Via 1 20 1 2 22.5 #74 1 &nbsp; &nbsp; o,&quot;d Plated slot 1 ",
            " 2 tolerance-assumed -0.1/+0.1 mm by the rule for plated ",
            " Total &nbsp; &nbsp; 1 1 Findings ",
            " Not drilled, and notes back drills left out: 2 (",
            "holes of T7: 1 where a comment says 9 Map of layer o,&quot;d (1 to 4) ",
            " Extent holes within 0.224 x 0.124 inch from 0.938, 0.938 Model ",
            "Circles have the drill size; sizes in mil. File o,&quot;d; extent holes within ",
            "; written on 2023-11-14 by brox ",
            " Tool Bit Drill size Hits Slots "
            "T01 PTH #74 22.5 1 T02 PTH 3.15 124.016 1 ",
            " 0.05 inch, scale 33.7:1"},
        ""},
    {"sed s/1,4,PTH/1,2,PTH/ $O >$D/1.drl; sed s/1,4,PTH/2,3,PTH/ $O >$D/2.drl;"
     " $B $O $D/1.drl $D/2.drl --drill-programs $D/p >/dev/null 2>&1; grep -h TF.File $D/p/*",
        0, {"Plated,1,4,PTH\n", "Plated,1,2,Blind\n", "Plated,2,3,Buried\n"}, ""},
    {"sed '/\"in1\" .>/s/top/in2/' backplane.xml >$D/b.xml; $B $D/b.xml --drill-programs $D/p"
     " >/dev/null 2>&1; grep -h TF.File $D/p/*",
        0, {"NonPlated,1,4,NPTH\n", "Plated,1,4,PTH\n", "Plated,2,3,Buried\n"}, ""},
    {"p='--drill-programs '$D/p; $B sensor.xml $p >/dev/null; cd $D/p; for i in *-Drill-plated*; do"
     " sed s/sensor/other/ $i >x.drl; cp $i y.drl; done; cd - >/dev/null; $B sensor.xml $p",
        0, {"$D/p/sensor-panel-Drill-plated.drl\n"},
        "$D/p/y.drl: of an earlier export; this one has no such program\n"},
    {"touch $D/x.html; ln -sf x.html $D/r.html; $B backplane.xml --report $D/r.html;"
     " sed '/<h2>Findings/,$d' $D/x.html | grep -o color:red | wc -l",
        0, {"\n8\n"}, ""},
    {"cp $O \"$D/a<b,c.drl\"; $B \"$D/a<b,c.drl\" --csv --map $D/m.svg 2>/dev/null; cat $D/m.svg",
        0,
        {"\n\"a<b,c\",Via,1,20,1,2,", "<title>Drill map of a&lt;b,c</title>",
            ">Drill map, layer a&lt;b,c (1 to 4)<"},
        ""},
    {"for i in '--units metric' '--units inch' '--step board' '--model HASL' '--sizes drilled'; do"
     " $B sensor.xml $i --screenshot $D/i.png 2>/dev/null; cksum <$D/i.png; done | sort -u | wc -l",
        0, {"5\n"}, ""},
    {"printf 'M48\\nT1C.01\\nT2C1.0\\n%%\\nT1\\nX10000Y10000\\nT2\\nX3.0Y1.0\\nM30\\n'"
     " | $B - --csv --file-units inch --vias-up-to 10mil --tolerance via=-2mil/+3mil",
        0,
        {"\nstandard input,Via,1,10,2,3,11.811,0.30,1,",
            ",,2,no-bit tolerance-assumed type-assumed\n"},
        "assumed: types (tools: 2), tolerances (tools: 2), "
        "digits of standard input (2:4, leading zeros left out)\n"},
    {"(cd $D/data/brox; sed -i 's/: 0.05/: 0.02/' shop_rules.json;"
     " sed -i 's/\"Pth\" amount=\"40000/\"PTH\" amount=\"4o/' brox.xml); $B breakout-NPTH.drl "
     "--csv",
        0, {",500,20,20,"},
        "$D/data/brox/brox.xml: line 4: name=\"PTH\" is no type of hole and counts as none\n"
        "$D/data/brox/brox.xml: line 4: amount=\"4o\" is no whole number and counts as 0\n"
        "assumed: tolerances (tools: 2)\n"},
    {"$B sensor.xml --csv --step board --model Unplated --data $D/new;"
     " rm $D/new/brox/brox.xml; $B --models --data $D/new",
        0, {",300,50,50,300,", ",350,50,50,350,", "Unplated\n"},
        "made the data folder $D/new\n"
        "$D/new/brox/brox.xml was missing and now has the defaults\n"},
    {"mkdir $D/l; touch $D/l/$(printf '\\351'); $B $D/l --csv; s=$?; rm -r $D/l; exit $s", 1, {},
        "brox-workbench: $D/l/\uFFFD:1: the name is not written in UTF-8\n"},
    // What has no size.
    {"cp -r $D/data $D/n; sed -i 's/ENIG/E\\xc2\\x9b31mN/' $D/n/brox/brox.xml;"
     " $B --models --data $D/n | head -1; $B $O --csv --model $(printf '\\033x') --data $D/n",
        1, {"E<U+009b>31mN\n"},
        "brox-workbench: no model \"␛x\"; there are: E<U+009b>31mN, HASL, Heavy copper, "
        "Immersion silver, Unplated\n"},
    {"noSize; $B sensor.xml --csv --step board --data $D/n", 1,
        {"\nDrill,Via,60,300,50,50,,,,no-size\n"},
        "brox-workbench: tools without a drill size by model \"ENIG\" and its formula: 9\n"},
    {"noSize; $B sensor.xml --json --step board --data $D/n 2>/dev/null | grep -e Size -e "
     "'\"tool\"'",
        0, {"\"drillSize\": null", "\"finishedSize\": 300", "\"tool\": null"}, ""},
    {"$B $A --file-units metric --json --places --units metric 2>/dev/null | tr -d ' \\n'", 0,
        {"\"drillSize\":null", "\"flags\":[\"no-size\",\"type-assumed\"]",
            "\"places\":[[{\"to\":[1000,1000]},{\"centre\":[1500,1000],\"clockwise\":true,\"to\":"
            "[2000,1000]}]]"},
        ""},
    {"$B $A --file-units metric --drill-programs $D", 1, {},
        "brox-workbench: layer \"arc\": the board specifies no size of T1, \"Plated slot\"\n"},
    {"sed 's/I0.5/I0.2/;s/T1/T1C1.0/' $A | $B - --file-units metric --drill-programs $D", 1, {},
        "brox-workbench: standard input:6: an arc whose ends are not equally far from its "
        "centre\n"},
    {"noSize; $B sensor.xml --map $D/m.svg --data $D/n 2>/dev/null; grep -q 'no size' $D/m.svg && "
     "echo "
     "told",
        0, {"told\n"}, ""},
    {"$B controller.xml --map $D/m.svg; grep -o ' y=\"[0-9.]*\".*map, layer' $D/m.svg | sort -u"
     " | wc -l; grep -o ' 0 1 0 ' $D/m.svg | wc -l",
        0, {"\n6\n1534\n"}, ""}, // half circles of each hole
    {"(echo M48; echo METRIC; echo T1C.3; echo %; echo T1; seq -f X%g 300 | sed "
     "'s/.*/&.0Y0.0\\n&.0Y1000.0/'"
     "; echo M30) >$D/x.drl; $B $D/x.drl --map $D/m.svg 2>/dev/null; grep -o 'dots: [^<]*' "
     "$D/m.svg;"
     " grep -o 'M[^M]* 0 1 0 ' $D/m.svg | wc -l",
        0, {"dots: holes too close for symbols\n600\n"}, ""},
    {"for i in 1 2 3 4; do"
     " SOURCE_DATE_EPOCH=1700000000 $B controller.xml --map $D/m.pdf >/dev/null; md5sum $D/m.pdf;"
     " done | uniq | wc -l; grep -ac '/Type /Page$' $D/m.pdf; grep -ao '/CreationDate (D:[0-9]*' "
     "$D/m.pdf",
        0, {"1\n6\n/CreationDate (D:20231114000000\n"}, ""},
    {"sed -i 's/\"ENIG\"/\"EN\\xc2\\x85IG\"/' $D/data/brox/brox.xml;"
     " $B sensor.xml --json 2>/dev/null | grep -o 'model.*IG'",
        0, {"model\": \"EN\\u0085IG"}, ""},
    {"noSize; $B sensor.xml --drill-programs $D --data $D/n", 1, {},
        "brox-workbench: layer \"Drill\": the tool \"Non-plated\" of 3175 micron has no drill size "
        "by model "
        "\"ENIG\" and its formula\n"},
    {"$B backplane.xml --strict --map $D/strict.svg; s=$?; ls $D/strict.svg 2>/dev/null; exit $s",
        2, {},
        "brox-workbench: tools that are flagged out-of-tolerance, no-bit, no-size, unapproved-bit "
        "or "
        "digits-doubtful: 4\n"},
    // What a shop asks before it drills.
    {"$B faults.xml --check --csv --strict --map $D/f.svg 2>/dev/null; s=$?; ls $D; exit $s", 2,
        {"\n\nFinding,Hard,Layer,Tools,X,Y,Measured,Limit,Id\nsame-place,yes,drill,",
            "\ntoo-near,no,drill,3 3,10000,2000,185.6,250,too-near-", "\narc.rou\ndata\no,"},
        ""},
    {"$B faults.xml --check --csv | sed -n 's/^overlap.*,/  /p;s/^edge.*,/ /p' >$D/ids;"
     " sed 's/^  \\(.*\\)/\\1; as agreed; 9999-01-01/;s/^ \\(.*\\)/\\1,old,2020-01-01/' $D/ids "
     ">$D/a;"
     " $B faults.xml --check --accept $D/a | grep -A99 Hard | cut -d' ' -f1 | grep -e over -e acc "
     "-e edge",
        0, {"edge\naccepted:\noverlap\naccepted\n"}, ""},
    {"$B faults-PTH.drl faults-NPTH.drl --check --json | tr -d ' \\n'", 0,
        {R"("measured":7,"places":[[10000,10000]],"rule":"count","tools":[1]},)",
            R"("limit":10,"measured":)", R"("skippedChecks":["outside","edge","aspect","window"])",
            R"("doubledHits":1,)"},
        "faults-PTH.drl: holes of T1: 7 where a comment says 5\n"
        "assumed: tolerances (tools: 1)\n"},
    {"$B controller.xml --csv --fewest-tools --step board", 0,
        {",889,#65,4,merged (was #64)\n", "DRILL_NPTH,"}, "22 tools instead of 28\n"},
    {"$B controller.xml --csv --tools-at-most 10 --drill-programs $D/p >/dev/null 2>$D/e; s=$?;"
     " grep -A2 needed $D/e; ls $D/p 2>/dev/null; exit $s",
        2,
        {"DRILL_1-6, plated: 11 tools are needed, --tools-at-most is 10; each of these needs one "
         "of its own:\nbrox-workbench:   Via 250 -50/+50 micron\nbrox-workbench:   Via 400 -80/+80 "
         "micron\n"},
        ""},
    {"$B breakout-PTH.drl breakout-NPTH.drl --drill-programs $D/1 >/dev/null 2>&1;"
     " $B $D/1/* --drill-programs $D/2 >/dev/null; $B $D/1/* --csv;"
     " for i in 1 2; do cat $D/$i/* | grep -v '^;' | cksum; done | sort -u | wc -l",
        0, {",0,0,0,350,0.35,1,as-drilled\n", "\n1\n"}, ""},
    {"$B breakout-PTH.drl --drill-programs $D/1 >/dev/null 2>&1;"
     " $B $D/1/* breakout-NPTH.drl --csv --strict 2>/dev/null",
        2, {",500,50,50,500,0.50,1,tolerance-assumed\n", ",0,0,0,350,0.35,1,as-drilled\n"}, ""},
    {"$B breakout-PTH.drl breakout-NPTH.drl --csv --sizes breakout-NPTH=drilled --strict", 0,
        {"\nbreakout-NPTH,Non-plated,28,0,0,0,500,,1,as-drilled\n"},
        "drill sizes: breakout-NPTH; finished sizes: breakout-PTH\n"
        "assumed: tolerances (tools: 7)\n"},
    // Many boards.
    {"printf 'sensor.xml\\nnone\\n\\nbackplane.xml\\n' | $B --csv --boards - --strict | grep Via",
        0, {"sensor.xml,Drill,Via,720,300,", "backplane.xml,drill_1-4,Via,140,254,0,0,350,0.35,1,"},
        "brox-workbench: none: No such file or directory\n"
        "brox-workbench: backplane.xml: tools that are flagged out-of-tolerance, no-bit, no-size, "
        "unapproved-bit or digits-doubtful: 4\n"},
    {"echo \"$D/o,\\\"d.drl\" >$D/list; $B --csv --boards $D/list", 0,
        {"Board,Layer,Type,Count,FHS [mil],"},
        "$D/o,\"d.drl: back drills left out: 2 (the fabricator chooses their tools)\n"
        "$D/o,\"d.drl: holes of T7: 1 where a comment says 9\n"
        "$D/o,\"d.drl: assumed: tolerances (tools: 1)\n"},
    {"(echo none; echo backplane.xml) >$D/list; $B --csv --boards $D/list --strict >/dev/null 2>&1",
        1, {}, ""},
    {"echo backplane.xml >$D/list; $B --csv --boards $D/list --strict >/dev/null 2>&1", 2, {}, ""},
    {"$B --table --boards -", 1, {},
        "brox-workbench: --boards goes with --csv, and instead of a board\n"},
    // What is refused.
    {"$B --models --strict", 1, {},
        "brox-workbench: --strict needs --table, --csv, --json or files to write\n"},
    {"$B sensor.xml --table --step x", 1, {},
        "brox-workbench: no step \"x\"; there are: board, panel\n"},
    {"$B sensor.xml --csv --model Enig", 1, {},
        "brox-workbench: no model \"Enig\"; did you mean ENIG?\n"},
    {"$B breakout-NPTH.drl --csv --type breakout-NPTH:3.2mm=press-fit 2>/dev/null", 0,
        {"breakout-NPTH,Press-fit,4,3200,"}, ""},
    {"$B breakout-NPTH.drl --csv --type breakout-NPTH:T9=via", 1, {},
        "brox-workbench: --type: no tool T9 in layer breakout-NPTH; there are: T1, T2\n"},
    {"$B --import-bits ready:metric && $B --export-bits - | sed 1,4d | head -1", 0,
        {"0.25,0.25,0.00984252,yes\n"}, ""},
    {"$B --import-bits ready:x", 1, {},
        "brox-workbench: no ready set \"x\"; there are: ready:starter, ready:metric, ready:inch\n"},
    {"$B sensor.xml --csv --units foot --data $D/no; s=$?; ls $D/no 2>/dev/null; exit $s", 1, {},
        "brox-workbench: no units \"foot\"; there are: inch, metric\n"},
    {"$B sensor.xml --screenshot $D/no/x.png 2>$D/e; s=$?; grep image $D/e; exit $s", 1,
        {"brox-workbench: $D/no/x.png: the image can't be written\n"}, ""},
    {"$B sensor.xml --csv --json", 1, {}, "brox-workbench: --csv does not go with --json\n"},
    {"$B sensor.xml --map $D/a.svg --map $D/b.svg", 1, {},
        "brox-workbench: --map is given twice\n"},
    {"$B sensor.xml --json >/dev/full", 1, {}, "brox-workbench: the output can't be written\n"},
    {"$B sensor.xml --report $D/./x.pdf --map $D/x.pdf; s=$?; ls $D/*x.pdf 2>/dev/null; exit $s", 1,
        {}, "brox-workbench: $D/x.pdf: can't be written: it is named twice\n"},
    {"$B sensor.xml --drill-programs $D/no/such; s=$?; ls $D/no 2>/dev/null; exit $s", 1, {},
        "brox-workbench: $D/no/such: can't be written: there is no folder $D/no\n"},
    {"cd $D/data/brox; rm brox.xml shop*; mkfifo shop_rules.json; mkdir brox.xml; $B --models", 1,
        {},
        "brox-workbench: $D/data/brox/brox.xml: it is a folder\n"
        "brox-workbench: $D/data/brox/shop_rules.json: it is no regular file\n"},
    {"d=$(printf '%0500d' 0 | sed 's,0\\{50\\},&/,g'); $B --models --data /$d 2>$D/e; s=$?;"
     " grep -o '[0-9]* bytes of at most 512' $D/e; exit $s",
        1, {"524 bytes of at most 512\n"}, ""},
    {"$B --table", 1, {}, "brox-workbench: a board file is needed\n"},
    {"$B sensor.xml --csv --tolerance plated=5", 1, {},
        "brox-workbench: --tolerance: \"5\" is no tolerance such as -0.05/+0.10 or +-2mil\n"},
    {"$B none --table", 1, {}, "brox-workbench: none: No such file or directory\n"},
    {"$B make_boards.py --screenshot none.png --language de", 1, {},
        "brox-workbench: make_boards.py:1: keine Bohrdatei, sondern ein Text ohne Bohrbefehle\n"},
    {"$B sensor.xml", 1, {},
        "brox-workbench: no display to open a window on; --table and --csv need none\n"},
};

} // namespace

/** The program as a user runs it, in the folder of the samples, from a shell without a display. */
class ProgramTest : public QObject
{
    Q_OBJECT

private:
    int run(const QString& command)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* name :
            {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR"}) {
            environment.remove(name);
        }
        environment.insert("B", QString(WORKBENCH " --data %1").arg(path("data")));
        environment.insert("D", mFolder->path());
        environment.insert("O", path("o,\"d.drl"));
        environment.insert("A", path("arc.rou"));
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(SAMPLES_DIR);
        process.start("sh", {"-c", noSize + command});
        process.waitForFinished();
        mOut = process.readAllStandardOutput();
        mError = process.readAllStandardError();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QString path(const char* name) const { return mFolder->filePath(name); }
    QString named(const char* text) const { return QString(text).replace("$D", mFolder->path()); }

    void write(const char* name, const char* content) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write(content);
    }

    std::unique_ptr<QTemporaryDir> mFolder; ///< each row's own
    QString mOut;
    QString mError;

private slots:
    void init()
    {
        mFolder = std::make_unique<QTemporaryDir>();
        write("o,\"d.drl", oddBoard);
        write("arc.rou", arc);
        QCOMPARE(run("$B --models"), 0); // makes the data
    }

    void does_data()
    {
        QTest::addColumn<const Case*>("each");
        for (const Case& each : cases) {
            QTest::newRow(each.command) << &each;
        }
    }

    void does()
    {
        QFETCH(const Case*, each);
        QCOMPARE(run(each->command), each->status);
        QCOMPARE(mError, named(each->error));
        QCOMPARE(mOut.isEmpty(), each->out.empty());
        if (QByteArray(each->command).contains("--table")) {
            mOut.replace(QRegularExpression(" +"), " ");
        }
        for (const char* part : each->out) {
            QVERIFY2(mOut.contains(named(part)), qPrintable(mOut));
        }
    }

    void keepsTheModelsThatAreThere()
    {
        QCOMPARE(run("$B --models"), 0);
        QVERIFY(mOut.startsWith("ENIG\n"));
        const QByteArray own = "<DrillToolModels><DrillToolModel name='Own'/></DrillToolModels>";
        for (const QByteArray& content : {own, own.chopped(1)}) {
            QFile models(path("data/brox/brox.xml"));
            QVERIFY(models.open(QIODevice::ReadWrite | QIODevice::Truncate));
            models.write(content);
            models.flush();
            const bool isWhole = content == own;
            QCOMPARE(run("$B --models"), isWhole ? 0 : 1);
            QCOMPARE(mOut, isWhole ? "Own\n" : "");
            QCOMPARE(mError.contains("brox/brox.xml: line 1"), !isWhole);
            models.seek(0);
            QCOMPARE(models.readAll(), content);
            QVERIFY(models.remove()); // the next run fills it again
        }
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_program.moc"
