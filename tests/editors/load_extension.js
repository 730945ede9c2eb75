// load_extension.js FOLDER
// Loads the extension in FOLDER like the editor, from its package only: a missing module makes it fail. An object in
// which every name is a class replaces the editor.
"use strict";

const Module = require("node:module");
const path = require("node:path");

const editor = new Proxy({}, { get: () => class {} });
const load = Module._load;
Module._load = (request, ...rest) => (request === "vscode" ? editor : load(request, ...rest));

const folder = path.resolve(process.argv[2]);
const extension = require(path.join(folder, require(path.join(folder, "package.json")).main));
for (const name of ["activate", "deactivate"]) {
  if (typeof extension[name] !== "function") {
    throw new Error(`the extension has no ${name}()`);
  }
}
