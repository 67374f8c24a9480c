<?xml version="1.0" encoding="utf-8"?>
<!-- SPDX-License-Identifier: MIT -->
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>Sample</name>
    <message>
        <source>language</source>
        <translation>English</translation>
    </message>
</context>
</TS>
