import assert from "node:assert/strict";
import { test } from "node:test";

import { picturePage } from "../../src/picture";

test("a picture is an image of its page", () => {
  const page = picturePage("<svg/>", "sine.mif");
  assert.match(page, /<img alt="sine\.mif" src="data:image\/svg\+xml;base64,PHN2Zy8\+">/);
  assert.match(page, /default-src 'none'/);
});

test("a file name is text, whatever characters it has", () => {
  assert.match(picturePage("", `"<b>&`), /<title>&quot;&lt;b&gt;&amp;<\/title>/);
});
