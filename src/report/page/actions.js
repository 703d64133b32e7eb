// What the user does, and where the page begins.
const moves = {
  ArrowDown: () => active + 1, ArrowUp: () => active - 1, Home: () => 0, End: () => shown.length - 1,
  PageDown: () => active + Math.floor(list.clientHeight / rowHeight) - 1,
  PageUp: () => active - Math.floor(list.clientHeight / rowHeight) + 1,
};
list.addEventListener("keydown", (event) => {
  if (event.target.closest("thead") || event.ctrlKey || event.altKey || event.metaKey) return;
  if (event.key === "Enter" && event.target === list) openSheet(active);
  if (!moves[event.key]) return;
  event.preventDefault();
  activate(moves[event.key]());
});
list.addEventListener("scroll", drawSeen, { passive: true });
new ResizeObserver(drawSeen).observe(list);
rows.addEventListener("click", (event) => {
  const row = event.target.closest("tr.till");
  // A selection is made to be copied.
  if (row && (event.target.closest("button") || getSelection().isCollapsed)) openSheet(Number(row.dataset.place));
});
rows.addEventListener("focusin", (event) => {
  const row = event.target.closest("tr.till");
  // A sheet that is closed gives the focus back to the till it was opened with, which need not be the last one shown.
  if (row && !state.till && Number(row.dataset.place) !== active) activate(Number(row.dataset.place));
});
byId("tills").tHead.addEventListener("click", (event) => {
  const sort = event.target.closest("[data-sort]")?.dataset.sort;
  // A third click gives the tills as they were found.
  if (sort && sort === state.sort && state.down) change({ sort: "", down: false });
  else if (sort) change({ sort, down: sort === state.sort });
});
byId("search").addEventListener("input", (event) => change({ q: event.target.value }));
byId("days").addEventListener("input", (event) => change({ days: daysOf(event.target.value) }));
for (const check of checks)
  byId(check).addEventListener("change", (event) => change({ [check]: event.target.checked }));
byId("all").addEventListener("click", () => {
  change({ q: "", days: "", deviates: false, failed: false, unread: false });
  byId("search").focus();
});
byId("filters").addEventListener("submit", (event) => event.preventDefault());
document.addEventListener("keydown", (event) => {
  if (event.key !== "/" || sheet.open || event.target.matches("input")) return;
  event.preventDefault();
  byId("search").focus();
});
byId("previous").addEventListener("click", () => openSheet(active - 1));
byId("next").addEventListener("click", () => openSheet(active + 1));
sheet.addEventListener("keydown", (event) => {
  if (event.altKey || event.ctrlKey || event.metaKey) return;
  if (event.key === "ArrowLeft" && active > 0) openSheet(active - 1);
  if (event.key === "ArrowRight" && active + 1 < shown.length) openSheet(active + 1);
});
sheet.addEventListener("close", () => {
  // This is told a frame later: another till may be shown by then.
  if (sheet.open) return;
  state.till = state.file = "";
  keepState();
  activate(active);
});
// On paper is all that is listed.
addEventListener("beforeprint", () => {
  if (sheet.open) return;
  draw(0, shown.length);
  drawPictures();
});
addEventListener("afterprint", drawSeen);
const takeState = () => {
  state = readState();
  active = 0;
  list.scrollTop = 0;
  show();
  const place = shown.findIndex(isAskedFor);
  if (place >= 0) openSheet(place);
  else {
    state.till = state.file = "";
    sheet.close();
  }
};
addEventListener("hashchange", takeState);

byId("filters").hidden = list.hidden = false;
byId("deviates").parentElement.hidden = !data.compared;
takeState();
