// The list. Rows are drawn for the part of it that is seen: how many tills there are does not matter.
const list = byId("list"), rows = byId("rows");
const Beyond = 8;  // rows that are drawn above and below what is seen
const drawn = new Map();
const space = [element("tr", "space"), element("tr", "space")].map((row) => {
  row.ariaHidden = "true";
  row.append(element("td"));
  return row;
});
rows.append(...space);
let active = 0;
let rowHeight = 56;

const pictures = new Map();
// Of a setup without modules there is none.
const pictureOf = ({ picture }, alt = "") => {
  if (data.pictures[picture].length === 0) return "";
  if (!pictures.has(picture)) {
    const lines = data.pictures[picture].flatMap(([first, count]) => data.lines.slice(first, first + count));
    pictures.set(picture, URL.createObjectURL(new Blob([lines.join("\n")], { type: "image/svg+xml" })));
  }
  const image = element("img");
  image.src = pictures.get(picture);
  image.alt = alt;
  return image;
};
// What is neither drawn nor in the sheet is made again when it is.
const forgetPictures = () => {
  const used = new Set([...document.images].map((image) => image.src));
  for (const [picture, address] of pictures) {
    if (used.has(address)) continue;
    URL.revokeObjectURL(address);
    pictures.delete(picture);
  }
};

const resultSpan = (result) => element("span", result.failed ? "bad" : result.outcome, resultWords(result));

const cellOf = (className, text) => {
  const cell = element("td", className);
  const inner = element("div", "text", text);
  if (text) inner.title = text;
  cell.append(inner);
  return cell;
};

const resultCell = (result) => {
  const cell = cellOf("result", "");
  if (!result) return cell;
  cell.firstChild.title = resultWords(result) + (result.message ? `. ${result.message}` : "");
  cell.firstChild.append(resultSpan(result), result.message ? ` ${result.message}` : "");
  return cell;
};

const MostTold = 5;  // as in the table without scripts
const deviationsCell = (till) => {
  const cell = cellOf("deviations", "");
  if (till.deviations.length === 0) return cell;
  const count = till.deviations.length;
  // More than two lines' worth is not seen.
  const told = till.deviations.slice(0, MostTold).map((each) => data.texts[each]);
  if (count > MostTold) told.push(`and ${count - MostTold} more`);
  cell.firstChild.append(element("b", "count", String(count)), `: ${told.join("; ")}`);
  return cell;
};

const nameCell = (name, isActive) => {
  const cell = element("th", "name");
  cell.scope = "row";
  const button = element("button");
  const text = element("span", "text", name);
  text.title = name;
  button.append(text);
  button.type = "button";
  button.tabIndex = isActive ? 0 : -1;
  cell.append(button);
  return cell;
};

const setupCells = (till) => {
  const picture = element("td", "picture");
  if (!till.setup)
    return [picture, cellOf("modules", ""), cellOf("options", ""), cellOf("deviations why", whyOf(till))];
  return [picture, cellOf("modules", till.setup.names), cellOf("options", till.setup.options), deviationsCell(till)];
};

const rowOf = (place) => {
  const till = shown[place];
  const row = element("tr", "till");
  row.dataset.place = place;
  row.ariaRowIndex = place + 2;
  row.append(nameCell(till.name, place === active), ...setupCells(till), resultCell(till.result),
    cellOf("time", till.result ? whenOf(till.result) : ""));
  return row;
};

const draw = (first, last) => {
  const isSeen = (place) => place >= first && place < last;
  const focused = document.activeElement.closest("tr.till");
  // Before the first row goes: of a list that is shorter for a moment the end would not be reached.
  if (focused && !isSeen(Number(focused.dataset.place))) list.focus({ preventScroll: true });
  for (const [place, row] of drawn) {
    if (isSeen(place)) continue;
    row.remove();
    drawn.delete(place);
  }
  // From below, so that what a row stands before is there.
  for (let place = last - 1; place >= first; --place) {
    if (drawn.has(place)) continue;
    const row = rowOf(place);
    (drawn.get(place + 1) ?? space[1]).before(row);
    drawn.set(place, row);
  }
  space[0].firstChild.style.height = `${first * rowHeight}px`;
  space[1].firstChild.style.height = `${(shown.length - last) * rowHeight}px`;
};

const drawPictures = () => {
  for (const [place, row] of drawn) {
    const cell = row.querySelector(".picture"), { setup } = shown[place];
    if (setup && !cell.firstChild) cell.append(pictureOf(setup));
  }
  forgetPictures();
};

// A picture takes longer than all else of a row: it waits until the list stands still.
const Still = 80;
let waiting = 0;
const drawSeen = () => {
  clearTimeout(waiting);
  waiting = setTimeout(drawPictures, Still);
  const first = Math.max(0, Math.min(Math.floor(list.scrollTop / rowHeight), shown.length) - Beyond);
  draw(first, Math.min(shown.length, first + Math.ceil(list.clientHeight / rowHeight) + 2 * Beyond));
};

const filterWords = () => {
  const words = checks.filter((check) => state[check]).map((check) => byId(check).parentElement.textContent.trim());
  if (state.q.trim() !== "") words.unshift(`"${state.q.trim()}"`);
  if (state.days !== "") words.push(`older than ${state.days} days`);
  return words;
};

const showState = () => {
  byId("search").value = state.q;
  byId("days").value = state.days;
  for (const check of checks) byId(check).checked = state[check];
  const filters = filterWords();
  const isFiltered = filters.length > 0;
  byId("filtered").textContent = isFiltered ? `Filtered by: ${filters.join("; ")}` : "";
  byId("all").disabled = !isFiltered;
  const count = (many) => many.toLocaleString("en");
  byId("count").textContent = isFiltered ? `${count(shown.length)} of ${count(tills.length)} tills`
    : `${count(tills.length)} ${tills.length === 1 ? "till" : "tills"}`;
  byId("none").hidden = shown.length > 0;
  for (const button of document.querySelectorAll("[data-sort]")) {
    const isSorted = button.dataset.sort === state.sort;
    button.closest("th").ariaSort = isSorted ? (state.down ? "descending" : "ascending") : "none";
  }
  byId("tills").ariaRowCount = shown.length + 1;
};

const redraw = () => {
  for (const row of drawn.values()) row.remove();
  drawn.clear();
  active = Math.min(active, Math.max(0, shown.length - 1));
  rowHeight = 3.5 * parseFloat(getComputedStyle(document.documentElement).fontSize);
  drawSeen();
};

const show = () => {
  choose();
  showState();
  redraw();
};
const change = (changes) => {
  Object.assign(state, changes);
  active = 0;
  list.scrollTop = 0;
  keepState();
  show();
};

const activate = (place) => {
  const before = drawn.get(active);
  if (before) before.querySelector("button").tabIndex = -1;
  active = Math.max(0, Math.min(place, shown.length - 1));
  const top = active * rowHeight;
  const room = list.clientHeight - document.querySelector("#tills thead").offsetHeight;
  if (top < list.scrollTop) list.scrollTop = top;
  else if (top + rowHeight > list.scrollTop + room) list.scrollTop = top + rowHeight - room;
  drawSeen();
  const button = drawn.get(active)?.querySelector("button");
  if (button) {
    button.tabIndex = 0;
    button.focus({ preventScroll: true });
  }
};
