// Draws the page of figures. What was measured is in figures-data.js, which measured.py explains.

const { runs, series, kernels } = globalThis.zvxgFigures;

// What one can choose: of the values several at a time, but of the first two one.
const QUESTIONS = {
  show: { legend: "Show", one: true, values: { time: "time of a call", ratio: "ratio to the peer", error: "relative error" } },
  family: {
    legend: "Transform", one: true,
    values: { complex: "complex DFT", real: "real DFT", hartley: "Hartley", wht: "Walsh-Hadamard", dct4: "DCT-IV" },
  },
  direction: { legend: "Direction", values: { forward: "forward", inverse: "inverse" } },
  layout: { legend: "Half spectrum", values: { ccs: "CCS", pack: "Pack", perm: "Perm" } },
  bits: { legend: "Precision", values: { 32: "single", 64: "double" } },
  variant: { legend: "Variant", values: { e9: "base (AVX)", v3: "v3 (AVX2)", v4: "v4 (AVX-512)" } },
  batch: {
    legend: "Batch",
    values: { single: "one transform", "rows-L1": "many, element-major", "contiguous-L1": "many, contiguous", "to-rows-L1": "many, contiguous to element-major" },
  },
  peer: { legend: "Peer", values: { FFTW: "FFTW" } },
};
const START = { show: ["ratio"], family: ["complex"], direction: ["forward"], layout: ["ccs"], bits: ["32", "64"], variant: ["e9"], batch: ["single"], peer: ["FFTW"] };
const CURVES = 10; // as many as style sheet has colours
const ROUNDOFF = { 32: 2 ** -24, 64: 2 ** -53 };

const element = (id) => document.getElementById(id);
const make = (tag, attributes = {}, ...content) => {
  const isDrawn = ["path", "line", "text", "circle", "g"].includes(tag);
  const made = isDrawn ? document.createElementNS("http://www.w3.org/2000/svg", tag) : document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) made.setAttribute(name, value);
  made.append(...content);
  return made;
};
const digits = (x, count = 3) => (x === null || x === undefined ? "" : String(Number(x.toPrecision(count))));
const time = (ns) => (ns >= 1e6 ? `${digits(ns / 1e6)} ms` : ns >= 1e3 ? `${digits(ns / 1e3)} µs` : `${digits(ns)} ns`);

// ---- The choice

let choice = structuredClone(START);
let at = null; // the length whose numbers are shown

for (const { peers = {} } of series) for (const peer of Object.keys(peers)) QUESTIONS.peer.values[peer] = peer;
for (const { batch } of series) QUESTIONS.batch.values[batch] ??= batch.replace("-L2", ", second-level cache").replace("-memory", ", in memory");
delete QUESTIONS.batch.values[""]; // of errors, which have no batch

/** The values that mean something for the family and the quantity; none if the question has no answer. */
function valuesOf(name) {
  const { show: [show], family: [family], batch } = choice;
  const all = Object.keys(QUESTIONS[name].values);
  if (name === "show" || name === "family" || name === "bits") return all;
  const of = series.filter((one) => one.family === family);
  if (name === "batch") return show === "error" ? [] : all;
  if (name === "variant") return show === "error" || !batch.includes("single") ? [] : all;
  if (name === "peer") return show === "error" ? [] : all.filter((peer) => of.some((one) => one.peers?.[peer] && batch.includes(one.batch)));
  return all.filter((value) => of.some((one) => one[name] === value));
}

function readAddress() {
  for (const [name, values] of new URLSearchParams(location.hash.slice(1))) {
    if (name === "n") at = Number(values);
    else if (name in QUESTIONS) choice[name] = values.split(",").filter((value) => value in QUESTIONS[name].values);
  }
}

function writeAddress() {
  const words = Object.keys(QUESTIONS).filter((name) => valuesOf(name).length).map((name) => [name, choice[name].join()]);
  history.replaceState(null, "", "#" + new URLSearchParams(at === null ? words : [...words, ["n", at]]));
}

function drawChoice() {
  const fields = Object.entries(QUESTIONS).map(([name, { legend, one, values }]) => {
    const offered = valuesOf(name);
    const inputs = offered.map((value) => {
      const input = make("input", { type: one ? "radio" : "checkbox", name, value });
      input.checked = choice[name].includes(value);
      return make("label", {}, input, " " + values[value]);
    });
    const field = make("fieldset", {}, make("legend", {}, legend), ...inputs);
    field.hidden = offered.length < 2;
    return field;
  });
  element("choice").replaceChildren(...fields);
}

element("choice").addEventListener("change", ({ target }) => {
  const { name, value } = target;
  if (QUESTIONS[name].one) choice[name] = [value];
  else choice[name] = valuesOf(name).filter((one) => document.querySelector(`input[name="${name}"][value="${one}"]`).checked);
  // Of what is chosen for another family, some may mean nothing here.
  for (const other of Object.keys(QUESTIONS)) {
    const offered = valuesOf(other);
    if (offered.length && !choice[other].some((one) => offered.includes(one)) && other !== name) choice[other] = [offered[0]];
  }
  drawChoice();
  document.querySelector(`input[name="${name}"][value="${value}"]`).focus();
  draw();
});

// ---- The curves

/** Every combination of what is chosen, with the series of it if there is one. */
function combinations() {
  const names = ["direction", "layout", "bits", "batch", "variant"];
  let all = [{ family: choice.family[0] }];
  for (const name of names) {
    const offered = valuesOf(name);
    const chosen = offered.length ? choice[name].filter((value) => offered.includes(value)) : [""];
    const hasIt = ({ batch }) => name !== "variant" || batch === "single"; // batches have the vectors of the processor
    all = all.flatMap((one) => (hasIt(one) ? chosen : [""]).map((value) => ({ ...one, [name]: value })));
  }
  const isError = choice.show[0] === "error";
  return all.map((one) => ({
    ...one,
    found: series.find((other) => !other.peers === isError && other.family === one.family && names.every((name) => other[name] === one[name])),
  }));
}

function labelOf(combination, isAlone) {
  const words = ["direction", "layout", "bits", "variant", "batch"]
    .filter((name) => combination[name] && (!isAlone || valuesOf(name).length > 1))
    .filter((name) => isAlone || choice[name].length > 1)
    .map((name) => QUESTIONS[name].values[combination[name]]);
  return words.join(", ");
}

function curvesOf(all) {
  const [show] = choice.show;
  const peers = choice.peer.filter((peer) => valuesOf("peer").includes(peer));
  const curves = [], missing = [];
  for (const one of all) {
    const { found } = one;
    const label = labelOf(one, false);
    const named = (...words) => words.filter(Boolean).join(", ");
    if (!found) {
      missing.push(labelOf(one, true));
      continue;
    }
    const points = (f) => found.n.map((n, i) => [n, f(n, i)]).filter(([, y]) => y !== null && y !== undefined);
    if (show === "error") curves.push({ label: label || "rms", found, points: points((n, i) => found.rms[i] / ROUNDOFF[found.bits]) });
    if (show === "time") curves.push({ label: named("zvxg", label), found, points: points((n, i) => found.ours[i]) });
    for (const peer of show === "error" ? [] : peers) {
      const times = found.peers[peer];
      if (!times) {
        missing.push(`${labelOf(one, true)} beside ${peer}`);
        continue;
      }
      const label2 = peers.length > 1 || show === "time" ? named(peer, label) : label;
      curves.push({ label: label2 || peer, found, peer, isDashed: show === "time",
        points: points((n, i) => (show === "time" ? times[n] : times[n] && times[n] / found.ours[i])) });
    }
  }
  return { curves: curves.filter(({ points }) => points.length), missing };
}

// ---- The chart

/** Where the colours begin again, the curves are dotted. */
const strokeOf = (i, isDashed) => `c${i % CURVES}${i >= CURVES ? " dotted" : isDashed ? " dashed" : ""}`;
const SUPERSCRIPTS = "⁰¹²³⁴⁵⁶⁷⁸⁹";
const powerOfTwo = (n) => "2" + [...String(Math.log2(n))].map((digit) => SUPERSCRIPTS[digit]).join("");

function ticksOf(low, high, isLogarithmic) {
  const ticks = [];
  if (isLogarithmic) {
    const steps = high / low > 1000 ? [1] : [1, 2, 5];
    for (let power = 10 ** Math.floor(Math.log10(low)); power <= high; power *= 10) ticks.push(...steps.map((step) => step * power));
  } else {
    const rough = (high - low) / 5, power = 10 ** Math.floor(Math.log10(rough));
    const step = [1, 2, 5, 10].find((factor) => factor * power >= rough) * power;
    for (let tick = Math.ceil(low / step) * step; tick <= high; tick += step) ticks.push(tick);
  }
  return ticks.filter((tick) => tick >= low && tick <= high);
}

let chart = null; // the lengths and where they are drawn, for the pointer

function drawChart(curves) {
  const svg = element("chart"), [show] = choice.show;
  const width = Math.max(svg.parentElement.clientWidth, 280), height = Math.min(420, Math.max(260, width * 0.6));
  const left = 56, right = width - 8, top = 10, bottom = height - 36;
  const lengths = [...new Set(curves.flatMap(({ points }) => points.map(([n]) => n)))].sort((a, b) => a - b);
  svg.setAttribute("viewBox", `0 0 ${width} ${height}`);
  svg.replaceChildren();
  chart = null;
  if (!lengths.length) return lengths;
  const all = curves.flatMap(({ points }) => points.map(([, y]) => y));
  const isWide = lengths.at(-1) > 64, isLogarithmic = show !== "error";
  let low = Math.min(...all), high = Math.max(...all);
  if (show === "ratio") [low, high] = [Math.min(low, 0.9), Math.max(high, 1.1)];
  [low, high] = isLogarithmic ? [low / 1.1, high * 1.1] : [0, high * 1.1];
  const scale = (value, a, b, from, to, isLog) =>
    from + ((isLog ? Math.log(value / a) / Math.log(b / a) : (value - a) / (b - a)) * (to - from));
  const x = (n) => (lengths.length < 2 ? (left + right) / 2 : scale(n, lengths[0], lengths.at(-1), left + 8, right - 8, isWide));
  const y = (value) => scale(value, low, high, bottom, top, isLogarithmic);
  for (const tick of ticksOf(low, high, isLogarithmic)) {
    svg.append(make("line", { class: show === "ratio" && tick === 1 ? "parity" : "grid", x1: left, x2: right, y1: y(tick), y2: y(tick) }),
      make("text", { x: left - 6, y: y(tick) + 4, "text-anchor": "end" }, show === "time" ? time(tick) : digits(tick)));
  }
  const step = Math.ceil(lengths.length / (width / 60));
  const named = isWide ? lengths.filter((n, i) => i % step === 0) : [2, 8, 16, 24, 32, 40, 48, 56, 64].filter((n) => width > 500 || n % 16 === 0 || n === 2);
  for (const n of named) {
    svg.append(make("line", { class: "grid", x1: x(n), x2: x(n), y1: top, y2: bottom }),
      make("text", { x: x(n), y: bottom + 16, "text-anchor": "middle" }, isWide ? powerOfTwo(n) : String(n)));
  }
  const unit = { time: "time of a call", ratio: "time of the peer / time of zvxg", error: "error in units of roundoff, rms" }[show];
  svg.append(make("text", { x: left, y: height - 4 }, unit), make("text", { x: right, y: height - 4, "text-anchor": "end" }, "length"));
  curves.forEach(({ points, isDashed }, i) => {
    const path = points.map(([n, value], j) => `${j ? "L" : "M"}${x(n).toFixed(1)} ${y(value).toFixed(1)}`).join("");
    svg.append(make("path", { class: `curve ${strokeOf(i, isDashed)}`, d: path }));
    for (const [n, value] of points) svg.append(make("circle", { class: `c${i % CURVES}`, cx: x(n), cy: y(value), r: 2 }));
  });
  const mark = make("line", { id: "mark", y1: top, y2: bottom });
  svg.append(mark);
  chart = { lengths, width, x, mark };
  return lengths;
}

function pointAt(event) {
  if (!chart) return;
  const box = element("chart").getBoundingClientRect();
  const place = ((event.clientX - box.left) / box.width) * chart.width;
  const distance = (n) => Math.abs(chart.x(n) - place);
  const nearest = chart.lengths.reduce((best, n) => (distance(n) < distance(best) ? n : best));
  if (nearest !== at) showLength(nearest);
}
element("chart").addEventListener("pointermove", pointAt);
element("chart").addEventListener("pointerdown", pointAt);
element("length").addEventListener("input", ({ target }) => showLength(chart.lengths[target.value]));

// ---- The numbers of a length

let drawn = [];

function showLength(n) {
  at = n;
  const place = chart.lengths.indexOf(n);
  Object.assign(element("length"), { max: chart.lengths.length - 1, value: place });
  element("length").setAttribute("aria-valuetext", `${n} points`);
  element("length-name").textContent = `${n}`;
  for (const end of ["x1", "x2"]) chart.mark.setAttribute(end, chart.x(n));
  const lines = drawn.map(({ label, found, peer, isDashed }) => {
    const i = found.n.indexOf(n);
    if (i < 0) return `${label}: not measured at this length`;
    if (found.rms) return `${label}: ${digits(found.rms[i])} rms, ${digits(found.worst[i])} in the worst trial`;
    const ours = time(found.ours[i]) + (found.spread ? ` (spread ${digits(found.spread[i], 2)} %)` : "");
    if (!peer) return `${label}: ${ours}`;
    const theirs = found.peers[peer][n];
    if (!theirs) return `${label}: not measured at this length`;
    return isDashed ? `${label}: ${time(theirs)}` : `${label}: zvxg ${ours}, ${peer} ${time(theirs)}, ratio ${digits(theirs / found.ours[i])}`;
  });
  const symbols = new Map(drawn.map(({ found }) => [found.symbol.replace("<N>", n), found]));
  const facts = [...symbols].filter(([symbol]) => symbol in kernels).map(([symbol, found]) => {
    const [row, width, adds, products, scales, shuffles, converts, bound] = kernels[symbol];
    const least = found.bound?.[found.n.indexOf(n)];
    const isOther = !["e9", ""].includes(found.variant) || !["single", ""].includes(found.batch);
    return make("li", {}, make("a", { href: `kernels/${symbol}.html` }, symbol), `${isOther ? " of the base" : ""}: ${row}, ${width ? `${width} bits` : "scalar"}; `
      + `${adds} additions, ${products} products by constants, ${scales} by the scale, ${shuffles} shuffles, ${converts} conversions; `
      + `at least ${bound} cycles` + (least ? `, ${time(least)} at the clock of the run` : ""));
  });
  element("numbers").replaceChildren(make("h3", {}, `${n} points`), make("ul", {}, ...lines.map((line) => make("li", {}, line)), ...facts));
  for (const row of element("chart-table").rows) row.classList.toggle("chosen", row.dataset.n === String(n));
  writeAddress();
}

function drawTable(lengths) {
  const cells = drawn.map(({ points }) => new Map(points));
  const shown = (value) => (choice.show[0] === "time" && value ? time(value) : digits(value));
  element("chart-table").replaceChildren(
    make("caption", {}, element("chart-title").textContent),
    make("thead", {}, make("tr", {}, ...["N", ...drawn.map(({ label }) => label)].map((text) => make("th", { scope: "col" }, text)))),
    make("tbody", {}, ...lengths.map((n) => make("tr", { "data-n": n }, make("th", { scope: "row" }, String(n)),
      ...cells.map((values) => make("td", {}, shown(values.get(n))))))));
}

function draw() {
  const { curves, missing } = curvesOf(combinations());
  drawn = curves;
  const [show] = choice.show, [family] = choice.family;
  const only = ["direction", "layout", "bits", "variant", "batch"]
    .filter((name) => valuesOf(name).length > 1 && choice[name].length === 1 && choice[name][0] !== "single")
    .filter((name) => curves.some(({ found }) => found[name]))
    .map((name) => QUESTIONS[name].values[choice[name][0]]);
  const peers = choice.peer.filter((peer) => valuesOf("peer").includes(peer));
  const what = { time: "Time of a call", ratio: `Time of ${peers.length === 1 ? peers[0] : "the peer"} divided by that of zvxg`, error: "Relative error, in units of roundoff" }[show];
  element("chart-title").textContent = `${what}: ${[QUESTIONS.family.values[family], ...only].join(", ")}`;
  const lengths = drawChart(curves);
  element("legend").replaceChildren(...curves.map(({ label, isDashed }, i) => make("li", { class: strokeOf(i, isDashed) }, label)));
  element("missing").textContent = missing.length ? `Not measured: ${missing.join("; ")}.` : curves.length ? "" : "Nothing is chosen.";
  drawTable(lengths);
  const about = new Set(curves.map(({ found }) => found.run));
  element("runs").replaceChildren(...[...about].flatMap((i) => [
    `docs/figures/${runs[i].file}: measured ${runs[i].date} on ${runs[i].cpu}, library ${runs[i].library}, built with ${runs[i]["built with"]}, ${runs[i].run}.`, make("br")]));
  for (const id of ["length-label", "numbers"]) element(id).hidden = !lengths.length;
  if (lengths.length) showLength(lengths.includes(at) ? at : lengths.find((n) => n >= (at ?? 12)) ?? lengths[0]);
  else writeAddress();
}

readAddress();
drawChoice();
draw();
let widthBefore = innerWidth;
addEventListener("resize", () => {
  if (innerWidth !== widthBefore) draw();
  widthBefore = innerWidth;
});
addEventListener("hashchange", () => {
  readAddress();
  drawChoice();
  draw();
});
