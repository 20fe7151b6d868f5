<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>brox_amounts</name>
    <message>
        <source>Form</source>
        <comment>81</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>The amount of overall hole size reduction occurring during plating</source>
        <comment>82</comment>
        <translation>Lochverengung durch das Metallisieren</translation>
    </message>
    <message>
        <source>Amount</source>
        <comment>84</comment>
        <translation>Zugabe</translation>
    </message>
    <message>
        <source>Amount to enlarge the hole sizes in the consideration of plating for holes smaller than &apos;Over Sized&apos;.</source>
        <comment>86</comment>
        <translation>Zugabe zum Endmaß, die das Metallisieren ausgleicht, für Löcher unter „Groß ab“.</translation>
    </message>
    <message>
        <source>Over Sized</source>
        <comment>89</comment>
        <translation>Groß ab</translation>
    </message>
    <message>
        <source>Hole sizes equal to and above this size will be enlarged by the &apos;OS Amount&apos; amount.</source>
        <comment>91</comment>
        <translation>Löcher ab diesem Endmaß erhalten die „Zug. groß“.</translation>
    </message>
    <message>
        <source>OS Amount</source>
        <comment>94</comment>
        <translation>Zug. groß</translation>
    </message>
    <message>
        <source>Amount to enlarge the hole size in the consideration of plating based on the &apos;Over Sized&apos; requirement.</source>
        <comment>96</comment>
        <translation>Zugabe zum Endmaß, die das Metallisieren ausgleicht, für Löcher ab „Groß ab“.</translation>
    </message>
</context>
<context>
    <name>brox_bits_table</name>
    <message>
        <source>Drill Size Table Editor</source>
        <comment>103</comment>
        <translation>Bohrertabelle bearbeiten</translation>
    </message>
    <message>
        <source>Unsaved data will be lost.
Click &apos;Save&apos; to save data before closing.</source>
        <comment>104</comment>
        <translation>Nicht gespeicherte Daten gehen verloren.
Mit „Speichern“ werden sie vor dem Schließen gespeichert.</translation>
    </message>
    <message>
        <source>Drill Size Table Editor *</source>
        <comment>131</comment>
        <translation>Bohrertabelle bearbeiten *</translation>
    </message>
    <message>
        <source>Drill Size Table Editor</source>
        <comment>132</comment>
        <translation>Bohrertabelle bearbeiten</translation>
    </message>
    <message>
        <source>Drill Size Table Editor</source>
        <comment>146</comment>
        <translation>Bohrertabelle bearbeiten</translation>
    </message>
    <message>
        <source>Microns</source>
        <comment>146</comment>
        <translation>µm</translation>
    </message>
    <message>
        <source>Mils</source>
        <comment>147</comment>
        <translation>Mil</translation>
    </message>
    <message>
        <source>Save</source>
        <comment>148</comment>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Ctrl+S</source>
        <comment>149</comment>
        <translatorcomment>Taste des Befehls, nur mit „Ctrl“ verständlich</translatorcomment>
        <translation>Ctrl+S</translation>
    </message>
    <message>
        <source>Open...</source>
        <comment>150</comment>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Close</source>
        <comment>151</comment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Ctrl+F4</source>
        <comment>152</comment>
        <translatorcomment>Taste des Befehls, nur mit „Ctrl“ verständlich</translatorcomment>
        <translation>Ctrl+F4</translation>
    </message>
    <message>
        <source>Add Drill Size</source>
        <comment>153</comment>
        <translation>Bohrer hinzufügen</translation>
    </message>
    <message>
        <source>Ctrl+N</source>
        <comment>154</comment>
        <translatorcomment>Taste des Befehls, nur mit „Ctrl“ verständlich</translatorcomment>
        <translation>Ctrl+N</translation>
    </message>
    <message>
        <source>Delete Drill Size</source>
        <comment>155</comment>
        <translation>Bohrer löschen</translation>
    </message>
    <message>
        <source>Ctrl+X</source>
        <comment>156</comment>
        <translatorcomment>Taste des Befehls, nur mit „Ctrl“ verständlich</translatorcomment>
        <translation>Ctrl+X</translation>
    </message>
    <message>
        <source>Drill Des.</source>
        <comment>159</comment>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>Millimeters</source>
        <comment>161</comment>
        <translation>Millimeter</translation>
    </message>
    <message>
        <source>Inches</source>
        <comment>163</comment>
        <translation>Zoll</translation>
    </message>
    <message>
        <source>Approved</source>
        <comment>165</comment>
        <translation>Freigabe</translation>
    </message>
    <message>
        <source>File</source>
        <comment>166</comment>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Edit</source>
        <comment>167</comment>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>toolBar</source>
        <comment>168</comment>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Unable to find BROX Bits XML file: %s</source>
        <comment>318</comment>
        <translation>BROX-Bohrerdatei (XML) nicht gefunden: %s</translation>
    </message>
    <message>
        <source>Error reading BROX Bits XML file: %s</source>
        <comment>331</comment>
        <translation>Fehler beim Lesen der BROX-Bohrerdatei (XML): %s</translation>
    </message>
    <message>
        <source>Error reading BROX Bits XML file: %s
parsing error message: %s
in line %d column %d.</source>
        <comment>339</comment>
        <translation>Fehler beim Lesen der BROX-Bohrerdatei (XML): %s
Meldung des XML-Lesers: %s
in Zeile %d, Spalte %d.</translation>
    </message>
    <message>
        <source>%s is not a legal BROX Bits XML file.</source>
        <comment>351</comment>
        <translation>%s ist keine gültige BROX-Bohrerdatei (XML).</translation>
    </message>
    <message>
        <source>BROX Bits XML File</source>
        <comment>493</comment>
        <translation>BROX-Bohrerdatei (XML)</translation>
    </message>
    <message>
        <source>All Files</source>
        <comment>494</comment>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Load Drill Bits XML file...</source>
        <comment>520</comment>
        <translation>Bohrerdatei (XML) laden …</translation>
    </message>
</context>
<context>
    <name>brox_dhs</name>
    <message>
        <source>Form</source>
        <comment>90</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Drill formula:</source>
        <comment>91</comment>
        <translation>Bohrformel:</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;body style=&quot;font-size:8pt;&quot;&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;&lt;span style=&quot;font-weight:600;&quot;&gt;Drill Formula&lt;/span&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Type a formula for calculating the Drill Hole Size.&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Only the following variables are recognized:&lt;/p&gt;
&lt;p style=&quot;margin:0px; white-space:pre-wrap;&quot;&gt;    &lt;span style=&quot;font-weight:600;&quot;&gt;FHS&lt;/span&gt;, &lt;span style=&quot;font-weight:600;&quot;&gt;AMOUNT&lt;/span&gt;, &lt;span style=&quot;font-weight:600;&quot;&gt;MIN_TOL&lt;/span&gt;, &lt;span style=&quot;font-weight:600;&quot;&gt;MAX_TOL&lt;/span&gt;, &lt;span style=&quot;font-weight:600;&quot;&gt;TOL_MEDIAN&lt;/span&gt;.&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Letter case is ignored (and converted to upper case).&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;&lt;span style=&quot;font-weight:600;&quot;&gt;Example&lt;/span&gt;: FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;/body&gt;&lt;/html&gt;</source>
        <comment>107</comment>
        <translation>&lt;html&gt;&lt;body style=&quot;font-size:8pt;&quot;&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;&lt;span style=&quot;font-weight:600;&quot;&gt;Bohrformel&lt;/span&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Geben Sie eine Formel für das Bohrmaß ein.&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Nur diese Variablen sind bekannt:&lt;/p&gt;
&lt;p style=&quot;margin:0px; white-space:pre-wrap;&quot;&gt;    &lt;span style=&quot;font-weight:600;&quot;&gt;FHS&lt;/span&gt; (Endmaß), &lt;span style=&quot;font-weight:600;&quot;&gt;AMOUNT&lt;/span&gt; (Zugabe), &lt;span style=&quot;font-weight:600;&quot;&gt;MIN_TOL&lt;/span&gt; (Minustoleranz), &lt;span style=&quot;font-weight:600;&quot;&gt;MAX_TOL&lt;/span&gt; (Plustoleranz), &lt;span style=&quot;font-weight:600;&quot;&gt;TOL_MEDIAN&lt;/span&gt; (Toleranzmitte).&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;Groß- und Kleinschreibung sind gleich (kleine Buchstaben werden groß).&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;p style=&quot;margin:0px;&quot;&gt;&lt;span style=&quot;font-weight:600;&quot;&gt;Beispiel&lt;/span&gt;: FHS + AMOUNT + (MAX_TOL - MIN_TOL) / 2&lt;/p&gt;
&lt;p style=&quot;margin:0px; -qt-paragraph-type:empty;&quot;&gt;&lt;br/&gt;&lt;/p&gt;
&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Use Bit File</source>
        <comment>110</comment>
        <translation>Bohrertabelle nutzen</translation>
    </message>
    <message>
        <source>Edit Drill Table</source>
        <comment>112</comment>
        <translation>Bohrertabelle bearbeiten</translation>
    </message>
    <message>
        <source>...</source>
        <comment>114</comment>
        <translation>…</translation>
    </message>
</context>
<context>
    <name>brox_job_data</name>
    <message>
        <source>Form</source>
        <comment>147</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Drill data in Job: </source>
        <comment>148</comment>
        <translation>Bohrdaten im Job: </translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <comment>149</comment>
        <translation>&lt;keiner&gt;</translation>
    </message>
    <message>
        <source>Recalcuate DHS values by the selected KRV Model</source>
        <comment>151</comment>
        <translation>Bohrmaße mit dem gewählten KRV-Modell neu berechnen</translation>
    </message>
    <message>
        <source>Recalculate</source>
        <comment>153</comment>
        <translation>Neu berechnen</translation>
    </message>
    <message>
        <source>Layer</source>
        <comment>155</comment>
        <translation>Lage</translation>
    </message>
    <message>
        <source>Type</source>
        <comment>157</comment>
        <translation>Art</translation>
    </message>
    <message>
        <source>Count</source>
        <comment>159</comment>
        <translation>Anzahl</translation>
    </message>
    <message>
        <source>FHS</source>
        <comment>161</comment>
        <translation>Endmaß</translation>
    </message>
    <message>
        <source>MIN TOL</source>
        <comment>163</comment>
        <translation>Tol. −</translation>
    </message>
    <message>
        <source>MAX TOL</source>
        <comment>165</comment>
        <translation>Tol. +</translation>
    </message>
    <message>
        <source>DHS</source>
        <comment>167</comment>
        <translation>Bohrmaß</translation>
    </message>
    <message>
        <source>Drill Des.</source>
        <comment>169</comment>
        <translation>Bohrer</translation>
    </message>
    <message>
        <source>;  Step: </source>
        <comment>170</comment>
        <translation>;  Step: </translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <comment>171</comment>
        <translation>&lt;keiner&gt;</translation>
    </message>
</context>
<context>
    <name>brox_model_manager</name>
    <message>
        <source>Form</source>
        <comment>138</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>New Model</source>
        <comment>139</comment>
        <translation>Neues Modell</translation>
    </message>
    <message>
        <source>Create new model</source>
        <comment>141</comment>
        <translation>Neues Modell anlegen</translation>
    </message>
    <message>
        <source>Rename Model</source>
        <comment>143</comment>
        <translation>Modell umbenennen</translation>
    </message>
    <message>
        <source>Rename current model</source>
        <comment>145</comment>
        <translation>Gewähltes Modell umbenennen</translation>
    </message>
    <message>
        <source>Delete Model</source>
        <comment>147</comment>
        <translation>Modell löschen</translation>
    </message>
    <message>
        <source>Delete current model</source>
        <comment>149</comment>
        <translation>Gewähltes Modell löschen</translation>
    </message>
    <message>
        <source>Drill Tool Models</source>
        <comment>152</comment>
        <translation>Bohrmodelle</translation>
    </message>
    <message>
        <source>No Drill Tool Models found.

To get started,
please create a new model.</source>
        <comment>155</comment>
        <translation>Keine Bohrwerkzeug-Modelle gefunden.

Legen Sie zunächst
ein neues Modell an.</translation>
    </message>
    <message>
        <source>KRV Model deletion</source>
        <comment>159</comment>
        <translation>KRV-Modell löschen</translation>
    </message>
    <message>
        <source>Delete Drill Tool Manager Model</source>
        <comment>160</comment>
        <translation>Bohrwerkzeug-Modell löschen:</translation>
    </message>
</context>
<context>
    <name>brox_tester</name>
    <message>
        <source>Form</source>
        <comment>81</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Test the Amount table and Drill formula</source>
        <comment>82</comment>
        <translation>Zugaben und Bohrformel erproben</translation>
    </message>
    <message>
        <source>FHS</source>
        <comment>84</comment>
        <translation>Endmaß</translation>
    </message>
    <message>
        <source>MIN TOL</source>
        <comment>86</comment>
        <translation>Tol. −</translation>
    </message>
    <message>
        <source>MAX TOL</source>
        <comment>88</comment>
        <translation>Tol. +</translation>
    </message>
    <message>
        <source>DHS</source>
        <comment>90</comment>
        <translation>Bohrmaß</translation>
    </message>
    <message>
        <source>Drill Des.</source>
        <comment>92</comment>
        <translation>Bohrer</translation>
    </message>
</context>
<context>
    <name>brox_viewer</name>
    <message>
        <source>Drill Tool Manager Setup</source>
        <comment>144</comment>
        <translation>Bohrwerkzeuge einrichten</translation>
    </message>
    <message>
        <source>Unsaved data will be lost.
Click &apos;Save&apos; to save data before closing.</source>
        <comment>145</comment>
        <translation>Nicht gespeicherte Daten gehen verloren.
Mit „Speichern“ werden sie vor dem Schließen gespeichert.</translation>
    </message>
    <message>
        <source>Form</source>
        <comment>272</comment>
        <translation>Formular</translation>
    </message>
    <message>
        <source>Load KRV Models</source>
        <comment>274</comment>
        <translation>KRV-Modelle laden</translation>
    </message>
    <message>
        <source>...</source>
        <comment>276</comment>
        <translation>…</translation>
    </message>
    <message>
        <source>Save KRV Models</source>
        <comment>278</comment>
        <translation>KRV-Modelle speichern</translation>
    </message>
    <message>
        <source>...</source>
        <comment>280</comment>
        <translation>…</translation>
    </message>
    <message>
        <source>Model:</source>
        <comment>281</comment>
        <translation>Modell:</translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <comment>282</comment>
        <translation>&lt;keines&gt;</translation>
    </message>
    <message>
        <source>Create new KRV Model</source>
        <comment>284</comment>
        <translation>Neues KRV-Modell anlegen</translation>
    </message>
    <message>
        <source>...</source>
        <comment>286</comment>
        <translation>…</translation>
    </message>
    <message>
        <source>Rename current KRV Model</source>
        <comment>288</comment>
        <translation>Gewähltes KRV-Modell umbenennen</translation>
    </message>
    <message>
        <source>...</source>
        <comment>290</comment>
        <translation>…</translation>
    </message>
    <message>
        <source>Delete current KRV Model</source>
        <comment>292</comment>
        <translation>Gewähltes KRV-Modell löschen</translation>
    </message>
    <message>
        <source>...</source>
        <comment>294</comment>
        <translation>…</translation>
    </message>
    <message>
        <source>Units: </source>
        <comment>295</comment>
        <translation>Einheit: </translation>
    </message>
    <message>
        <source>&lt;UNITS&gt;</source>
        <comment>296</comment>
        <translation>&lt;EINHEIT&gt;</translation>
    </message>
    <message>
        <source>BROX XML File</source>
        <comment>312</comment>
        <translation>BROX-Modelldatei (XML)</translation>
    </message>
    <message>
        <source>All Files</source>
        <comment>313</comment>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>Load Drill Tool Model Manager XML file...</source>
        <comment>340</comment>
        <translation>Datei der Bohrwerkzeug-Modelle (XML) laden …</translation>
    </message>
    <message>
        <source>Unable to find BROX XML file: %s</source>
        <comment>419</comment>
        <translation>BROX-Modelldatei (XML) nicht gefunden: %s</translation>
    </message>
    <message>
        <source>Error reading BROX XML file: %s</source>
        <comment>432</comment>
        <translation>Fehler beim Lesen der BROX-Modelldatei (XML): %s</translation>
    </message>
    <message>
        <source>Error reading BROX XML file: %s
parsing error message: %s
in line %d column %d.</source>
        <comment>440</comment>
        <translation>Fehler beim Lesen der BROX-Modelldatei (XML): %s
Meldung des XML-Lesers: %s
in Zeile %d, Spalte %d.</translation>
    </message>
    <message>
        <source>%s is not a legal BROX XML file.</source>
        <comment>447</comment>
        <translation>%s ist keine gültige BROX-Modelldatei (XML).</translation>
    </message>
    <message>
        <source>&lt;None&gt;</source>
        <comment>669</comment>
        <translation>&lt;keines&gt;</translation>
    </message>
    <message>
        <source>Drill Tool Manager Setup</source>
        <comment>730</comment>
        <translation>Bohrwerkzeuge einrichten</translation>
    </message>
    <message>
        <source>Rename not allowed.
Possible causes: name exists, or name is too long (over 64 characters).</source>
        <comment>731</comment>
        <translation>Umbenennen nicht möglich.
Mögliche Ursachen: Den Namen gibt es schon, oder er ist zu lang (über 64 Zeichen).</translation>
    </message>
</context>
</TS>
