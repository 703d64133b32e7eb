// The sheet of a till: all that is known of it, with its keys.
const sheet = byId("sheet");
const Cell = 44;
const KeyNames = data.keyTypes;

// The keys of a map with where they are; covered positions are part of their larger key.
const keysOf = ({ map, columns, first }) => {
  const covered = new Set(), keys = [];
  for (let at = 0; at < map.length; ++at) {
    const type = map[at];
    if (type === " " || type === "X" || (type === "0" && covered.has(at))) continue;
    const wide = type === "3" || type === "4", tall = type === "2" || type === "4";
    if (wide) covered.add(at + 1);
    if (tall) covered.add(at + columns);
    if (wide && tall) covered.add(at + columns + 1);
    keys.push({ type, number: first + at, column: at % columns, row: Math.floor(at / columns),
      width: wide ? 2 : 1, height: tall ? 2 : 1 });
  }
  return keys;
};

const drawing = (name, attributes, text) => {
  const shape = document.createElementNS("http://www.w3.org/2000/svg", name);
  for (const [key, value] of Object.entries(attributes)) shape.setAttribute(key, value);
  if (text) shape.textContent = text;
  return shape;
};

const keyShape = (key, deviates) => {
  const group = drawing("g", { class: (key.type === "0" ? "unused " : "") + (deviates ? "deviates" : "") });
  const x = key.column * Cell + 3, y = key.row * Cell + 3;
  const width = key.width * Cell - 6, height = key.height * Cell - 6;
  group.append(drawing("title", {}, `Key ${key.number}: ${KeyNames[key.type]}`),
    drawing("rect", { x, y, width, height, rx: 4 }),
    drawing("text", { x: x + width / 2, y: y + height / 2 },
      key.type === "0" ? `(${key.number})` : String(key.number)));
  return group;
};

const keyGrid = (module, deviating) => {
  const keys = keysOf(module);
  const width = module.columns * Cell, height = Math.max(1, ...keys.map((key) => key.row + key.height)) * Cell;
  const count = {};
  for (const { type } of keys) count[type] = (count[type] ?? 0) + 1;
  const words = Object.keys(KeyNames).filter((type) => count[type])
    .map((type) => `${KeyNames[type]}: ${count[type]}`);
  const grid = drawing("svg", { class: "keys", viewBox: `0 0 ${width} ${height}`, width, height, role: "img",
    "aria-label": words.join("; ") });
  grid.append(...keys.map((key) => keyShape(key, deviating.has(key.number))));
  return grid;
};

const deviatingKeys = (texts) =>
  new Set(texts.map((text) => Number(/\bKey (?:\d+ -> )?(\d+):/.exec(text)?.[1])));

const listOf = (texts) => {
  const items = element("ul");
  items.append(...texts.map((text) => element("li", "", text)));
  return items;
};

const moduleSection = (module, deviating) => {
  const section = element("section");
  section.append(element("h3", "", module.title), element("p", "facts", module.facts.join("; ")));
  if (module.map) section.append(keyGrid(module, deviating));
  return section;
};

const sheetParts = (till) => {
  const parts = [];
  if (till.file) parts.push(element("p", "facts", till.file));
  if (till.why) parts.push(element("p", "bad", whyOf(till)));
  if (till.result) {
    const result = element("p");
    result.append("Last result: ", resultSpan(till.result), ` (${whenOf(till.result)})`);
    if (till.result.message) result.append(element("br"), till.result.message);
    parts.push(result);
  }
  const texts = textOf(till);
  if (texts.length > 0) parts.push(element("h3", "", `Deviations from the standard: ${texts.length}`), listOf(texts));
  if (till.setup) {
    const modules = element("div");
    modules.id = "sheet-modules";
    const deviating = deviatingKeys(texts);
    modules.append(...till.setup.modules.map((each) => moduleSection(data.modules[each], deviating)));
    parts.push(element("h3", "", "Devices"), pictureOf(till.setup, `Picture of ${till.setup.names}`), modules);
  }
  return parts;
};

const openSheet = (place) => {
  const till = shown[place];
  if (!till) return;
  activate(place);
  byId("sheet-name").textContent = till.name;
  byId("sheet-content").replaceChildren(...sheetParts(till));
  byId("sheet-content").scrollTop = 0;
  byId("previous").disabled = place === 0;
  byId("next").disabled = place === shown.length - 1;
  state.till = till.name;
  state.file = till.file ?? "";
  keepState();
  if (!sheet.open) sheet.showModal();
  byId("sheet-content").focus();
};
