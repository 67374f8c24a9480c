<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>CAppTranslation</name>
    <message>
        <source>en</source>
        <translation>Englisch</translation>
    </message>
</context>
<context>
    <name>Sample</name>
    <message>
        <source>language</source>
        <translation>German</translation>
    </message>
</context>
</TS>
