import assert from "node:assert/strict";
import { describe, test } from "node:test";

import { convertArguments, outputFormats, plotArguments, serverArguments } from "../../src/command_line";

const nothing = { width: null, endian: "", addressUnit: "" };
const everything = { width: 12, endian: "little", addressUnit: "byte" };
const optionsOfEverything = ["--width", "12", "--endian", "little", "--address-unit", "byte"];

describe("the server", () => {
  test("has no options where nothing is set", () => {
    assert.deepEqual(serverArguments({ ...nothing, consumers: [] }), ["lsp"]);
  });

  test("has an option for each setting", () => {
    assert.deepEqual(serverArguments({ ...everything, consumers: ["kvr", "icarus"] }), [
      "lsp",
      ...optionsOfEverything,
      "--for",
      "kvr,icarus",
    ]);
  });
});

test("a file is converted with the options of the settings", () => {
  assert.deepEqual(convertArguments(everything, "mif", "/a b.hex", "/c.mif"), [
    "convert",
    ...optionsOfEverything,
    "--to",
    "mif",
    "/a b.hex",
    "/c.mif",
  ]);
});

test("a file is drawn into another one", () => {
  assert.deepEqual(plotArguments(nothing, "/a.mif", "/tmp/a.svg"), ["plot", "--output", "/tmp/a.svg", "/a.mif"]);
});

describe("the formats to convert to", () => {
  const mif = { name: "mif", title: "MIF", extensions: ["mif"], uses: ["read", "write"] };
  const elf = { name: "elf", title: "ELF", extensions: ["elf"], uses: ["read"] };

  test("are those that the tool writes", () => {
    const formats = outputFormats(JSON.stringify({ formats: [mif, elf] }));
    assert.deepEqual(formats, [{ name: "mif", title: "MIF", extensions: ["mif"] }]);
  });

  test("are refused where the answer is another one", () => {
    assert.throws(() => outputFormats("[]"), /lists no formats/);
    assert.throws(() => outputFormats("null"), /lists no formats/);
    assert.throws(() => outputFormats(JSON.stringify({ formats: [{ ...mif, uses: "write" }] })), /in another way/);
    assert.throws(() => outputFormats("kvrmem: unknown option"), SyntaxError);
  });
});
