import tseslint from "typescript-eslint";

export default tseslint.config(
  { ignores: ["out/", "*.mjs"] },
  tseslint.configs.strictTypeChecked,
  tseslint.configs.stylisticTypeChecked,
  { languageOptions: { parserOptions: { projectService: true, tsconfigRootDir: new URL(".", import.meta.url).pathname } } },
  {
    files: ["test/unit/**"],
    // node:test itself waits for the promises that describe() and test() return.
    rules: { "@typescript-eslint/no-floating-promises": "off" },
  },
);
