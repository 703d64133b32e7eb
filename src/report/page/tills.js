"use strict";
// The tills of the report, and which of them are shown in which order. That stands behind the # of the address, so that
// it can be kept and sent.
const byId = (id) => document.getElementById(id);
const data = JSON.parse(byId("data").textContent);
const made = Date.parse(data.made);
const Day = 24 * 60 * 60 * 1000;
const checks = ["deviates", "failed", "unread"];

const element = (name, className, text) => {
  const made = document.createElement(name);
  if (className) made.className = className;
  if (text) made.textContent = text;
  return made;
};

const tills = data.tills.map((till, place) => ({
  ...till, place,
  setup: data.setups[till.setup],
  deviations: data.lists[till.list ?? 0] ?? [],
  time: till.result ? Date.parse(till.result.time) : NaN,
}));
const textOf = (till) => till.deviations.map((each) => data.texts[each]);
const whyOf = (till) => (till.file ? "Could not be read: " : "") + till.why;
const resultWords = (result) => `${result.action}: ${result.outcome}`;
const whenOf = (result) => result.time.slice(0, 16).replace("T", " ");

const listTexts = new Map();
const searchText = (till) => {
  if (!till.text) {
    const key = till.list ?? 0;
    if (!listTexts.has(key)) listTexts.set(key, textOf(till).join("\n").toLowerCase());
    const { setup, result } = till;
    till.text = [till.name, till.file, till.why && whyOf(till), setup?.names, setup?.options,
      result && resultWords(result), result?.message, result && whenOf(result)].join("\n").toLowerCase();
  }
  return till.text + "\n" + listTexts.get(till.list ?? 0);
};
const collator = new Intl.Collator("en", { numeric: true, sensitivity: "base" });
const number = (value) => (Number.isNaN(value) ? -1 : value);
// What somebody should look at comes first, tills with which nothing was done last.
const resultRank = ({ result }) => (result ? (result.failed ? "1" : "2") + result.outcome + result.action : "3");
const sortings = {
  name: (a, b) => collator.compare(a.name, b.name),
  modules: (a, b) => collator.compare(a.setup?.names ?? "", b.setup?.names ?? ""),
  options: (a, b) => collator.compare(a.setup?.options ?? "", b.setup?.options ?? ""),
  deviations: (a, b) => a.deviations.length - b.deviations.length,
  result: (a, b) => collator.compare(resultRank(a), resultRank(b)),
  time: (a, b) => number(a.time) - number(b.time),
};

const daysOf = (text) => (/^\d+$/.test(text) ? text : "");
const readState = () => {
  const asked = new URLSearchParams(location.hash.slice(1));
  const state = { q: asked.get("q") ?? "", days: daysOf(asked.get("days") ?? ""), sort: asked.get("sort") ?? "",
    down: asked.has("down"), till: asked.get("till") ?? "", file: asked.get("file") ?? "" };
  for (const check of checks) state[check] = asked.has(check);
  return state;
};
let state = readState();
let shown = tills;
// Names need not be unique, and tills may share a file.
const isAskedFor = (till) => till.name === state.till && (!state.file || till.file === state.file);

const keepState = () => {
  const asked = new URLSearchParams();
  for (const [name, value] of Object.entries(state))
    if (value) asked.set(name, value === true ? "1" : value);
  // A page that may not change its address works without.
  try { history.replaceState(null, "", "#" + asked); } catch { }
};

const choose = () => {
  const words = state.q.toLowerCase().split(/\s+/).filter(Boolean);
  const oldest = state.days === "" ? NaN : made - Number(state.days) * Day;
  shown = tills.filter((till) =>
    (!state.deviates || till.deviations.length > 0) &&
    (!state.failed || till.result?.failed) &&
    (!state.unread || (till.file && till.why)) &&
    (Number.isNaN(oldest) || !(till.time >= oldest)) &&
    (words.length === 0 || words.every((word) => searchText(till).includes(word))));
  const compare = sortings[state.sort];
  if (compare) {
    const turn = state.down ? -1 : 1;
    shown.sort((a, b) => turn * compare(a, b) || a.place - b.place);
  }
};
