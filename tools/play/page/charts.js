const numberFormat = new Intl.NumberFormat("en");
const grouped = (number) => numberFormat.format(number);
const counted = (number, one, many = one + "s") =>
  grouped(number) + " " + (number === 1 ? one : many);

const keyNames = [
  "C",
  "C\u266f",
  "D",
  "D\u266f",
  "E",
  "F",
  "F\u266f",
  "G",
  "G\u266f",
  "A",
  "A\u266f",
  "B",
];
/** As most sequencers count: the C in the middle of the piano is C3. */
const keyName = (pitch) => keyNames[pitch % 12] + (Math.floor(pitch / 12) - 2);

function clockTime(seconds, decimals = 0) {
  const scale = 10 ** decimals;
  const whole = Math.round(seconds * scale);
  const rest = ((whole % (60 * scale)) / scale).toFixed(decimals);
  return Math.floor(whole / (60 * scale)) + ":" + rest.padStart(decimals ? decimals + 3 : 2, "0");
}

/** Three figures of a time, in the unit that suits it. */
function duration(seconds) {
  const units = [
    ["s", 1],
    ["ms", 1e-3],
    ["\u00b5s", 1e-6],
    ["ns", 1e-9],
  ];
  const [unit, size] = units.find(([, scale]) => seconds >= 0.9995 * scale) || units[3];
  return Number((seconds / size).toPrecision(3)) + " " + unit;
}

function make(name, text, className) {
  const element = document.createElement(name);
  if (text !== undefined) element.textContent = text;
  if (className) element.className = className;
  return element;
}

/** @param rows lists of texts; a cell may be {text, className} */
function makeTable(caption, heads, rows) {
  const table = make("table");
  table.append(make("caption", caption));
  const headRow = table.createTHead().insertRow();
  for (const head of heads) {
    const cell = make("th", head);
    cell.scope = "col";
    headRow.append(cell);
  }
  const body = table.createTBody();
  for (const row of rows) {
    const line = body.insertRow();
    row.forEach((cell, column) => {
      const element = make(column ? "td" : "th", cell.text ?? cell, cell.className);
      if (!column) element.scope = "row";
      line.append(element);
    });
  }
  const scroll = make("div", undefined, "scroll");
  scroll.tabIndex = 0;
  scroll.setAttribute("role", "region");
  scroll.setAttribute("aria-label", caption);
  scroll.append(table);
  return scroll;
}

/** The colours of the scheme in use. */
function readColours() {
  const style = getComputedStyle(document.documentElement);
  const colours = {};
  for (const name of [
    "card",
    "text",
    "quiet",
    "line",
    "grid",
    "sent",
    "back",
    "lost",
    "extra",
    "time",
    "time-most",
    "limit",
  ])
    colours[name] = style.getPropertyValue("--" + name).trim();
  return colours;
}

/** All pictures of the page; those on the time axis show the same part of the song. */
const pictures = {
  all: [],
  view: { from: 0, to: 1 },

  drawAll() {
    const colours = readColours();
    for (const picture of this.all) picture.draw(colours);
  },
};

const LABEL_FONT = "11px system-ui, 'Liberation Sans', sans-serif";
const TIME_STEPS = [
  0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 5, 10, 15, 30, 60, 120, 300, 600,
  1200, 3600,
];

/** What a picture draws on: its context, the box inside its axes, and the scales that it has. */
class Plot {
  constructor(context, width, height, colours) {
    this.context = context;
    this.colours = colours;
    this.left = width < 480 ? 42 : 62;
    this.right = width - 10;
    this.top = 8;
    this.bottom = height - 20;
    this.width = this.right - this.left;
    this.height = this.bottom - this.top;
    context.font = LABEL_FONT;
  }

  x(time) {
    const { from, to } = pictures.view;
    return this.left + ((time - from) / (to - from)) * this.width;
  }

  text(words, x, y, align = "left", colour = this.colours.quiet) {
    this.context.fillStyle = colour;
    this.context.textAlign = align;
    this.context.textBaseline = "middle";
    this.context.fillText(words, x, y);
  }

  line(x1, y1, x2, y2, colour, dash = []) {
    const { context } = this;
    context.strokeStyle = colour;
    context.lineWidth = 1;
    context.setLineDash(dash);
    context.beginPath();
    context.moveTo(Math.round(x1) + 0.5, Math.round(y1) + 0.5);
    context.lineTo(Math.round(x2) + 0.5, Math.round(y2) + 0.5);
    context.stroke();
    context.setLineDash([]);
  }

  timeAxis() {
    const { from, to } = pictures.view;
    const most = Math.max(2, Math.floor(this.width / 80));
    const step = TIME_STEPS.find((size) => (to - from) / size <= most) || 3600;
    const decimals = step < 0.01 ? 3 : step < 0.1 ? 2 : step < 1 ? 1 : 0;
    for (let i = Math.ceil(from / step); i * step <= to; ++i) {
      const x = this.x(i * step);
      this.line(x, this.top, x, this.bottom, this.colours.grid);
      if (x < this.right - 12)
        this.text(
          clockTime(i * step, decimals),
          x,
          this.bottom + 11,
          x < this.left + 12 ? "left" : "center",
        );
    }
  }

  label(words, y) {
    this.line(this.left, y, this.right, y, this.colours.grid);
    this.text(words, this.left - 6, y, "right");
  }

  limit(words, y) {
    this.line(this.left, y, this.right, y, this.colours.limit, [6, 4]);
    this.text(words, this.right - 4, y + 9, "right", this.colours.limit);
  }

  /** Draws inside the axes alone. */
  inside(draw) {
    const { context } = this;
    context.save();
    context.beginPath();
    context.rect(this.left, this.top - 6, this.width, this.height + 12);
    context.clip();
    draw();
    context.restore();
  }

  cross(x, y, size = 4) {
    const { context } = this;
    context.strokeStyle = this.colours.lost;
    context.lineWidth = 2;
    context.beginPath();
    context.moveTo(x - size, y - size);
    context.lineTo(x + size, y + size);
    context.moveTo(x + size, y - size);
    context.lineTo(x - size, y + size);
    context.stroke();
  }

  triangle(x, y, size = 4.5) {
    const { context } = this;
    context.fillStyle = this.colours.lost;
    context.beginPath();
    context.moveTo(x, y - size);
    context.lineTo(x + 1.6 * size, y);
    context.lineTo(x, y + size);
    context.fill();
  }

  diamond(x, y, size = 4.5) {
    const { context } = this;
    context.strokeStyle = this.colours.extra;
    context.lineWidth = 2;
    context.beginPath();
    context.moveTo(x, y - size);
    context.lineTo(x + size, y);
    context.lineTo(x, y + size);
    context.lineTo(x - size, y);
    context.closePath();
    context.stroke();
  }
}

/** A canvas with a title, and with its message in words for those who do not see it. */
class Picture {
  /** @param words the message: what a caption says and what a screen reader reads
      @param paint is called with a Plot */
  constructor(parent, { title, words, lost, height, paint }) {
    this.height = height;
    this.paint = paint;
    const figure = make("figure");
    const caption = make("figcaption");
    caption.append(make("h3", title), make("p", words));
    if (lost) caption.append(" ", make("p", lost, "lost"));
    this.canvas = make("canvas");
    this.canvas.setAttribute("role", "img");
    this.canvas.setAttribute("aria-label", [title, words, lost].filter(Boolean).join(". "));
    figure.append(caption, this.canvas);
    parent.append(figure);
    this.figure = figure;
    pictures.all.push(this);
  }

  draw(colours) {
    const width = this.figure.clientWidth;
    const scale = document.documentElement.classList.contains("printing")
      ? 3
      : Math.max(window.devicePixelRatio, 1);
    this.canvas.width = Math.round(width * scale);
    this.canvas.height = Math.round(this.height * scale);
    this.canvas.style.height = this.height + "px";
    const context = this.canvas.getContext("2d");
    context.scale(scale, scale);
    this.paint(new Plot(context, width, this.height, colours), this.canvas);
  }
}

/** Spans of the shown part as columns of at least a pixel: {x, width}, and the largest value of
    those that share one. */
function columnsOf(spans, plot, valueOf) {
  const { from, to } = pictures.view;
  const columns = [];
  let last = null;
  for (const span of spans) {
    if (span.end < from || span.start > to) continue;
    const x = Math.floor(plot.x(span.start));
    const value = valueOf(span);
    if (last && last.x === x) {
      last.value = Math.max(last.value, value);
      continue;
    }
    last = { x, width: Math.max(1, Math.ceil(plot.x(span.end)) - x), value };
    columns.push(last);
  }
  return columns;
}

/** A function from values to heights in a plot, where each factor of ten takes the same height. */
function logScale(plot, smallest, largest) {
  const decades = Math.log10(largest / smallest);
  return (value) =>
    plot.bottom - (Math.log10(Math.max(value, smallest) / smallest) / decades) * plot.height;
}
