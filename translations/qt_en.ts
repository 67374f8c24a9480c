<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: GPL-3.0-only WITH Qt-GPL-exception-1.0 -->
<!DOCTYPE TS>
<!-- Qt's own English catalogue is empty, and an empty file is passed over. Whoever reads English, then German, would
     get Qt's texts in German. Maintained by hand: the texts are Qt's, so lupdate does not find them in our sources. -->
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>QPlatformTheme</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&amp;Yes</source>
        <translation>&amp;Yes</translation>
    </message>
    <message>
        <source>&amp;No</source>
        <translation>&amp;No</translation>
    </message>
    <message>
        <source>Abort</source>
        <translation>Abort</translation>
    </message>
</context>
</TS>
