import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { extname, join } from "node:path";
import { describe, test } from "node:test";

import { knownExtensions, languageOf } from "../../src/language";

interface Manifest {
  contributes: { languages: { id: string; extensions?: string[] }[] };
}

const root = process.env["KVR_SOURCE"] ?? join(__dirname, "../../../../..");
const samples = join(root, "tests/editors/languages");

describe("the language of a file", () => {
  for (const line of readFileSync(join(samples, "expected"), "utf8").trim().split("\n")) {
    const [file = "", expected = ""] = line.split(/\s+/);
    test(`${file} is ${expected}`, () => {
      const text = readFileSync(join(samples, file), "utf8");
      assert.equal(languageOf(extname(file).slice(1), text) ?? "none", expected);
    });
  }

  test("does not depend on the letter case of the extension", () => {
    assert.equal(languageOf("MIF", "WIDTH=8;\n"), "kvr-mif");
  });

  test("is undefined for an unknown extension", () => {
    assert.equal(languageOf("cpp", "WIDTH=8;\n"), undefined);
  });
});

test("the manifest claims the extensions that are not those of nearly everything", () => {
  const manifest = JSON.parse(readFileSync("package.json", "utf8")) as Manifest;
  const claimed = manifest.contributes.languages.flatMap(({ id, extensions = [] }) =>
    extensions.map((extension) => [extension.slice(1), id]),
  );
  const known = knownExtensions().filter((extension) => languageOf(extension, "") !== undefined);
  const expected = known.map((extension) => [extension, languageOf(extension, "")]);
  assert.deepEqual(claimed.sort(), expected.sort());
});
