/** TEXT with HTML escapes. */
function escaped(text: string): string {
  return text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;").replace(/"/g, "&quot;");
}

/** A page with one SVG picture. It is embedded as an image, so that no script in it runs. */
export function picturePage(svg: string, title: string): string {
  const image = Buffer.from(svg, "utf8").toString("base64");
  return `<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; img-src data:; style-src 'unsafe-inline'">
<title>${escaped(title)}</title>
<style>body { padding: 1em; background: white; } img { max-width: 100%; }</style>
</head>
<body><img alt="${escaped(title)}" src="data:image/svg+xml;base64,${image}"></body>
</html>
`;
}
