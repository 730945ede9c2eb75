/** The possible languages of each extension. The first one that matches the contents counts. */
const languagesOfExtension: ReadonlyMap<string, readonly string[]> = new Map([
  ["mif", ["kvr-mif"]],
  ["hex", ["kvr-hex", "kvr-readmem"]],
  ["ihex", ["kvr-hex"]],
  ["ihx", ["kvr-hex"]],
  ["rif", ["kvr-rif"]],
  ["mem", ["kvr-readmem", "kvr-memheader"]],
  ["vmem", ["kvr-readmem"]],
  ["dat", ["kvr-readmem"]],
  ["txt", ["kvr-titxt", "kvr-readmem"]],
  ["coe", ["kvr-coe"]],
  ["srec", ["kvr-srec"]],
  ["s19", ["kvr-srec"]],
  ["s28", ["kvr-srec"]],
  ["s37", ["kvr-srec"]],
  ["mot", ["kvr-srec"]],
]);

/** Extensions that many programs use: a list of words without an address or a comment gets no language. */
const openExtensions: ReadonlySet<string> = new Set(["dat", "txt"]);

/** Lines that occur only in files of the language. */
const signs: ReadonlyMap<string, RegExp> = new Map([
  [
    "kvr-mif",
    new RegExp(
      String.raw`^[ \t]*(?:(?:WIDTH|DEPTH|ADDRESS_RADIX|DATA_RADIX)\s*=|CONTENT(?:[ \t]+BEGIN)?\s*$` +
        String.raw`|(?:[0-9A-F]+|\[\s*[0-9A-F]+\s*\.\.\s*[0-9A-F]+\s*\])\s*:\s*[-0-9A-FX][-0-9A-FX \t]*;)`,
      "im",
    ),
  ],
  ["kvr-hex", /^[ \t]*:\s*[0-9A-F]{2}\s*[0-9A-F]{4}\s*0[0-5]/im],
  ["kvr-srec", /^[ \t]*S[0-35-9][0-9A-Fa-f]{6,}\s*$/m],
  ["kvr-coe", /^[ \t]*memory_initialization_(?:radix|vector)\s*=/im],
  ["kvr-memheader", /^#Format\s*=/im],
]);

/** The possible forms of each word of a list. */
const words: ReadonlyMap<string, RegExp> = new Map([
  ["kvr-rif", /^(?:@[0-9A-F]+|[0-9A-FX]+)$/i],
  ["kvr-readmem", /^(?:@[0-9A-F]+|[0-9A-FXZ][0-9A-FXZ_]*)$/i],
  ["kvr-titxt", /^(?:@[0-9A-F]+|[0-9A-F]{2}|q)$/i],
]);

const readmemComment = /\/\*.*?(?:\*\/|$(?![^]))|\/\/[^\n]*/gs;

function isList(language: string, extension: string, text: string): boolean {
  const rest = language === "kvr-readmem" ? text.replace(readmemComment, " ") : text;
  const found = rest.split(/\s+/).filter((word) => word !== "");
  const pattern = words.get(language);
  if (pattern === undefined || found.length === 0 || !found.every((word) => pattern.test(word))) {
    return false;
  }
  if (language === "kvr-titxt") {
    return found[0]?.startsWith("@") === true && found.at(-1)?.toLowerCase() === "q";
  }
  return !openExtensions.has(extension) || rest !== text || found.some((word) => word.startsWith("@"));
}

/**
 * The language of a file.
 *
 * @param extension the text after the last "." of its name, in any letter case
 * @param text      its contents, or its first lines and its last one
 * @returns undefined for a file of other software
 */
export function languageOf(extension: string, text: string): string | undefined {
  if (/^v2\.0 raw|^v3\.0 hex /.test(text)) {
    return "kvr-logisim";
  }
  const key = extension.toLowerCase();
  const languages = languagesOfExtension.get(key) ?? [];
  if (text.trim() === "") {
    return openExtensions.has(key) ? undefined : languages[0];
  }
  return languages.find((language) => signs.get(language)?.test(text) ?? isList(language, key, text));
}

/** Every extension that languageOf() knows. */
export function knownExtensions(): string[] {
  return [...languagesOfExtension.keys()];
}
