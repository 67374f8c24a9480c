// SPDX-License-Identifier: MIT
// Compiles a format description to Python: node compile.js DESCRIPTION FOLDER. Modules are looked for in NODE_PATH.
const fs = require("fs");
const path = require("path");
const yaml = require("js-yaml");
const Compiler = require("kaitai-struct-compiler");

const [description, folder] = process.argv.slice(2);
const compiler = typeof Compiler === "function" ? new Compiler() : Compiler;
compiler.compile("python", yaml.load(fs.readFileSync(description, "utf8"))).then(
    (files) => {
        for (const [name, content] of Object.entries(files))
            fs.writeFileSync(path.join(folder, name), content);
    },
    (error) => {
        console.error(String(error));
        process.exit(1);
    });
