const FIRST_LISTED = 20;
const MOST_LISTED = 500;

function lostWords(starts, ends) {
  const words = [];
  if (starts) words.push(counted(starts, "note-on"));
  if (ends) words.push(counted(ends, "note-off"));
  return words.length ? words.join(" and ") + " lost" : "";
}

function showHeader({ report, length }) {
  const { notes } = report;
  document.title = report.song + " \u2013 what play played";
  document.getElementById("title").textContent = report.song;
  document.getElementById("subtitle").textContent =
    `${clockTime(Math.floor(length))} through ${report.plugIn}, in ${report.host}`;
  const sentences = [];
  const lost = lostWords(notes.lostNoteOns, notes.lostNoteOffs);
  if (lost) sentences.push(lost + ".");
  if (notes.notSent)
    sentences.push(counted(notes.notSent, "note event") + " came back without having been sent.");
  const verdict = document.getElementById("verdict");
  verdict.textContent = sentences.join(" ") || "Every note that was sent came back.";
  verdict.className = sentences.length ? "bad" : "good";
}

function showFigures({ report, block }) {
  const total = ({ noteOns, noteOffs }) =>
    [...noteOns, ...noteOffs].reduce((sum, count) => sum + count, 0);
  const { notes, process, queue } = report;
  const list = document.getElementById("figures");
  const add = (id, name, value, bad) => {
    const entry = make("div", undefined, bad ? "bad" : "");
    const figure = make("dd", value);
    figure.id = id;
    entry.append(make("dt", name), figure);
    list.append(entry);
  };
  add("figure-sent", "note events sent", grouped(total(notes.sent)));
  add("figure-left", "came back by \u201cMidi Out\u201d", grouped(total(notes.midiOut)));
  add("figure-lost", "lost", grouped(notes.lost), notes.lost !== 0);
  add(
    "figure-longest",
    "longest block, of " + duration(block),
    duration(process.longestSeconds),
    process.blocksTooLate > 0,
  );
  add("figure-queue", "most events that waited, of " + queue.limit, grouped(queue.longest));
}

/** The places of lost events, in their order. */
function lossesOf({ notes }) {
  const places = [];
  for (const note of notes) {
    if (note.lostStart) places.push({ start: note.start, end: note.start });
    if (note.lostEnd) places.push({ start: note.end, end: note.end });
  }
  return places.sort((a, b) => a.start - b.start);
}

function showOverview(data, parent) {
  const rate = (count) => (span) => count(span) / Math.max(span.end - span.start, 1e-9);
  const sentRate = rate((span) => span.sent);
  const leftRate = rate((span) => span.left);
  const losses = lossesOf(data);
  const most = data.spans.reduce(
    (largest, span) => Math.max(largest, sentRate(span), leftRate(span)),
    1,
  );
  const picture = new Picture(parent, {
    title: "In and out",
    words:
      "Note events a second: sent upwards, back by \u201cMidi Out\u201d downwards; at most " +
      `${grouped(Math.round(most))}. ` +
      "Half as high is a quarter as many. A cross is where events were lost.",
    height: 120,
    paint(plot) {
      const middle = (plot.top + plot.bottom) / 2;
      const heightOf = (value) => Math.sqrt(value / most) * (plot.height / 2);
      plot.timeAxis();
      plot.label("0", middle);
      plot.text("sent", plot.left - 6, plot.top + 8, "right");
      plot.text("back", plot.left - 6, plot.bottom - 8, "right");
      plot.inside(() => {
        plot.context.fillStyle = plot.colours.sent;
        for (const { x, width, value } of columnsOf(data.spans, plot, sentRate))
          plot.context.fillRect(x, middle - heightOf(value), width, heightOf(value));
        plot.context.fillStyle = plot.colours.back;
        for (const { x, width, value } of columnsOf(data.spans, plot, leftRate))
          plot.context.fillRect(x, middle + 1, width, heightOf(value));
        for (const { x } of columnsOf(losses, plot, () => 1)) plot.cross(x, middle);
      });
    },
  });
  chooseByDragging(picture);
}

/** One part's notes, its keys from the lowest to the highest. Marks are drawn last, and keep their
    size when the notes are small. */
function paintRoll(plot, notes, extra, lowest, highest) {
  const { context, colours } = plot;
  const { from, to } = pictures.view;
  const row = plot.height / (highest - lowest + 1);
  const yOf = (pitch) => plot.bottom - (pitch - lowest + 0.5) * row;
  const marks = [];
  plot.timeAxis();
  plot.label(keyName(lowest), yOf(lowest));
  if (plot.height / 2 > 14 && highest > lowest) plot.label(keyName(highest), yOf(highest));
  const bar = (start, end, y, height) =>
    context.fillRect(
      plot.x(start),
      y - height / 2,
      Math.max(plot.x(end) - plot.x(start), 1.5),
      height,
    );
  plot.inside(() => {
    const shown = notes.filter((note) => note.end >= from && note.start <= to);
    context.fillStyle = colours.sent;
    for (const note of shown)
      if (!note.lostStart && note.begins)
        bar(note.start, note.end, yOf(note.pitch), Math.max(row * 0.9, 2));
    context.fillStyle = colours.back;
    for (const note of shown)
      if (note.startBack !== null)
        bar(
          note.startBack,
          Math.max(note.endBack ?? note.end, note.startBack),
          yOf(note.pitch),
          Math.max(row * 0.5, 2),
        );
    context.strokeStyle = colours.lost;
    context.lineWidth = 1;
    for (const note of shown)
      if (note.lostStart)
        context.strokeRect(
          plot.x(note.start),
          yOf(note.pitch) - 2,
          plot.x(note.end) - plot.x(note.start),
          4,
        );
    for (const note of shown) {
      if (note.lostStart) marks.push(() => plot.cross(plot.x(note.start), yOf(note.pitch)));
      if (note.lostEnd) marks.push(() => plot.triangle(plot.x(note.end), yOf(note.pitch)));
    }
    for (const event of extra)
      marks.push(() => plot.diamond(plot.x(event.start), yOf(event.pitch)));
    for (const mark of marks) mark();
  });
  return marks.length;
}

function showPart(data, part, parent) {
  const notes = data.notes.filter((note) => note.part === part);
  const extra = data.extra.filter((event) => event.part === part);
  const pitches = [...notes, ...extra].map((note) => note.pitch);
  if (!pitches.length) return;
  const lowest = pitches.reduce((a, b) => Math.min(a, b));
  const highest = pitches.reduce((a, b) => Math.max(a, b));
  const lostStarts = notes.filter((note) => note.lostStart).length;
  const lostEnds = notes.filter((note) => note.lostEnd).length;
  const keys =
    lowest === highest ? `on ${keyName(lowest)}` : `from ${keyName(lowest)} to ${keyName(highest)}`;
  const lost = [
    lostWords(lostStarts, lostEnds),
    extra.length ? counted(extra.length, "event") + " not sent" : "",
  ]
    .filter(Boolean)
    .join(", ");
  const picture = new Picture(parent, {
    title: "Part " + (part + 1),
    words:
      counted(notes.filter((note) => note.begins).length, "note") +
      " " +
      keys +
      (lost ? "," : ", all of them came back"),
    lost,
    height: Math.min(Math.max((highest - lowest + 1) * 4, 44), 132) + 28,
    paint(plot, canvas) {
      canvas.dataset.marks = paintRoll(plot, notes, extra, lowest, highest);
    },
  });
  picture.canvas.id = "part-" + (part + 1);
}

function showCurves({ curves, report }, parent) {
  curves.forEach(
    ({ title, points }, index) =>
      new Picture(parent, {
        title: "Automation of \u201c" + title + "\u201d",
        words:
          `${counted(report.automation[index].points, "value")} sent, one a block, ` +
          "from 0 to 100 % of the parameter\u2019s range.",
        height: 96,
        paint(plot) {
          const yOf = (value) => plot.bottom - value * plot.height;
          plot.timeAxis();
          plot.label("0 %", yOf(0));
          plot.label("100 %", yOf(1));
          plot.inside(() => {
            plot.context.strokeStyle = plot.colours.back;
            plot.context.lineWidth = 2;
            plot.context.lineJoin = "round";
            plot.context.beginPath();
            for (const { time, value } of points) plot.context.lineTo(plot.x(time), yOf(value));
            plot.context.stroke();
          });
        },
      }),
  );
}

function timeLabels(smallest, largest) {
  const labels = [];
  for (let time = smallest; time <= largest; time *= 10) labels.push(time);
  return labels;
}

function showProcess({ spans, block, blocksInASpan, report }, parent) {
  const smallest = SHORTEST_TIME;
  const largest = Math.max(block, report.process.longestSeconds) * 1.6;
  const together =
    blocksInASpan > 1 ? ` Each column is ${grouped(blocksInASpan)} blocks or more.` : "";
  new Picture(parent, {
    title: "Time of process",
    words:
      "Pale the longest, dark the mean of the blocks at each place; " +
      `at most ${duration(report.process.longestSeconds)} of the ` +
      `${duration(block)} that a block lasts. The scale grows by factors of ten.${together}`,
    lost: report.process.blocksTooLate
      ? counted(report.process.blocksTooLate, "block") + " too late"
      : "",
    height: 150,
    paint(plot) {
      const yOf = logScale(plot, smallest, largest);
      plot.timeAxis();
      for (const time of timeLabels(smallest, largest)) plot.label(duration(time), yOf(time));
      plot.inside(() => {
        plot.context.fillStyle = plot.colours["time-most"];
        for (const { x, width, value } of columnsOf(spans, plot, (span) => span.longest))
          plot.context.fillRect(x, yOf(value), width, plot.bottom - yOf(value));
        plot.context.fillStyle = plot.colours.time;
        for (const { x, width, value } of columnsOf(spans, plot, (span) => span.mean))
          plot.context.fillRect(x, yOf(value), width, plot.bottom - yOf(value));
        for (const { x, value } of columnsOf(spans, plot, (span) => span.longest))
          if (value > block) plot.cross(x, yOf(value));
      });
      plot.limit("a block lasts " + duration(block), yOf(block));
    },
  });
}

function showQueue({ spans, report }, parent) {
  const { limit, longest } = report.queue;
  const crowded = report.notes.crowdedBlocks;
  const largest = Math.max(limit, longest, ...spans.map((span) => span.mostSent)) * 1.6;
  new Picture(parent, {
    title: "The queue",
    words:
      "How many events waited for \u201cMidi Out\u201d when a block handed them over: " +
      `at most ${grouped(longest)}; ` +
      `the queue holds ${limit}. The thin line is how many were sent to one block.`,
    lost: crowded ? counted(crowded, "block") + " got more than the queue holds" : "",
    height: 120,
    paint(plot) {
      const yOf = logScale(plot, 0.5, largest);
      plot.timeAxis();
      for (const count of timeLabels(1, largest)) plot.label(grouped(count), yOf(count));
      plot.inside(() => {
        plot.context.fillStyle = plot.colours.back;
        for (const { x, width, value } of columnsOf(spans, plot, (span) => span.mostLeft))
          if (value) plot.context.fillRect(x, yOf(value), width, plot.bottom - yOf(value));
        plot.context.fillStyle = plot.colours.quiet;
        const sent = columnsOf(spans, plot, (span) => span.mostSent);
        for (const { x, width, value } of sent)
          if (value) plot.context.fillRect(x, yOf(value) - 1, width, 1.5);
        for (const { x, value } of sent) if (value > limit) plot.cross(x, yOf(value));
      });
      plot.limit(`the queue holds ${limit}`, yOf(limit));
    },
  });
}

/** Ten bars to a factor of ten. */
function barsOf(times) {
  const bars = [];
  const steps = STEPS_TO_A_TENFOLD / 10;
  const timeAt = (step) => SHORTEST_TIME * 10 ** (step / STEPS_TO_A_TENFOLD);
  for (let i = 0; i < times.length; i += steps) {
    const blocks = times.slice(i, i + steps).reduce((sum, count) => sum + count, 0);
    bars.push({ from: timeAt(i), to: timeAt(i + steps), blocks });
  }
  return bars;
}

function showTimes({ times, block, report }, parent) {
  const { process } = report;
  const bars = barsOf(times);
  const filled = bars.filter((bar) => bar.blocks);
  const largest = Math.max(block * 1.6, filled.length ? filled[filled.length - 1].to : 0);
  const smallest = Math.min(1e-6, filled.length ? filled[0].from : 1e-6);
  const most = bars.reduce((high, bar) => Math.max(high, bar.blocks), 1);
  new Picture(parent, {
    title: "Distribution",
    words:
      `Half of ${counted(process.blocks, "block")} took at most ` +
      `${duration(process.medianSeconds)}, 99 % at most ` +
      `${duration(process.within99PercentSeconds)}. Both scales grow by factors of ten.`,
    height: 190,
    paint(plot) {
      plot.top += 14;
      plot.height -= 14;
      const decades = Math.log10(largest / smallest);
      const xOf = (time) => plot.left + (Math.log10(time / smallest) / decades) * plot.width;
      const yOf = logScale(plot, 0.5, most * 1.5);
      for (const count of timeLabels(1, most * 1.5)) plot.label(grouped(count), yOf(count));
      plot.text("blocks", plot.left - 6, plot.top - 12, "right");
      for (const time of timeLabels(SHORTEST_TIME, largest)) {
        if (time < smallest * 0.99) continue;
        plot.line(xOf(time), plot.top, xOf(time), plot.bottom, plot.colours.grid);
        plot.text(
          duration(time),
          xOf(time),
          plot.bottom + 11,
          xOf(time) < plot.left + 12 ? "left" : "center",
        );
      }
      for (const { from, to, blocks } of filled) {
        plot.context.fillStyle = from >= block ? plot.colours.lost : plot.colours.time;
        plot.context.fillRect(
          xOf(from),
          yOf(blocks),
          Math.max(xOf(to) - xOf(from) - 1, 1),
          plot.bottom - yOf(blocks),
        );
      }
      plot.line(xOf(block), plot.top, xOf(block), plot.bottom, plot.colours.limit, [6, 4]);
      plot.text(
        "a block lasts " + duration(block),
        xOf(block) - 4,
        plot.top - 4,
        "right",
        plot.colours.limit,
      );
    },
  });
  const share = (seconds) => ((100 * seconds) / block).toPrecision(2) + " %";
  const rows = [
    ["half of the blocks", process.medianSeconds],
    ["99 of 100", process.within99PercentSeconds],
    ["999 of 1,000", process.within999PermilleSeconds],
    ["all", process.longestSeconds],
  ];
  parent.append(
    makeTable(
      `Of ${counted(process.blocks, "block")}, which last ${duration(block)} each`,
      ["Blocks", "took at most", "of a block\u2019s length"],
      rows.map(([name, seconds]) => [name, duration(seconds), share(seconds)]),
    ),
  );
  const details = make("details");
  details.append(
    make("summary", "The distribution as a table"),
    makeTable(
      "Blocks by the time that they took",
      ["from", "up to", "blocks"],
      filled.map(({ from, to, blocks }) => [duration(from), duration(to), grouped(blocks)]),
    ),
  );
  parent.append(details);
}

function showLost({ notes, extra }, parent) {
  const events = [];
  for (const note of notes) {
    if (note.lostStart)
      events.push({ time: note.start, part: note.part, pitch: note.pitch, words: "note-on lost" });
    if (note.lostEnd)
      events.push({
        time: note.end,
        part: note.part,
        pitch: note.pitch,
        words: note.startBack === null ? "note-off lost" : "note-off lost: the note hangs",
      });
  }
  for (const event of extra)
    events.push({
      time: event.start,
      part: event.part,
      pitch: event.pitch,
      words: (event.on ? "note-on" : "note-off") + " that was not sent",
    });
  if (!events.length) return;
  events.sort((a, b) => a.time - b.time);
  const tableOf = (caption, some) =>
    makeTable(
      caption,
      ["Time", "Part", "Key", "What happened"],
      some.map(({ time, part, pitch, words }) => [
        clockTime(time, 3),
        String(part + 1),
        keyName(pitch),
        { text: words, className: "words" },
      ]),
    );
  const all = counted(events.length, "event");
  parent.append(
    tableOf(
      events.length > FIRST_LISTED ? `The first ${FIRST_LISTED} of ${all}` : all,
      events.slice(0, FIRST_LISTED),
    ),
  );
  if (events.length > FIRST_LISTED) {
    const last = Math.min(events.length, MOST_LISTED);
    const details = make("details");
    details.append(
      make("summary", last < events.length ? `More, up to the ${last}th of ${all}` : "The others"),
      tableOf(all, events.slice(FIRST_LISTED, last)),
    );
    parent.append(details);
  }
  document.getElementById("lost-section").hidden = false;
}

function showCounts({ report, notes }, parent) {
  const { sent, editor, midiOut } = report.notes;
  const pair = (counts, part) =>
    grouped(counts.noteOns[part]) + " / " + grouped(counts.noteOffs[part]);
  const rows = [];
  for (let part = 0; part < 16; ++part) {
    if (
      !(sent.noteOns[part] + sent.noteOffs[part] + midiOut.noteOns[part] + midiOut.noteOffs[part])
    )
      continue;
    const ofPart = notes.filter((note) => note.part === part);
    const lost = [
      ofPart.filter((note) => note.lostStart).length,
      ofPart.filter((note) => note.lostEnd).length,
    ];
    rows.push([
      String(part + 1),
      pair(sent, part),
      ...(editor ? [pair(editor, part)] : []),
      pair(midiOut, part),
      { text: lost.map(grouped).join(" / "), className: lost[0] + lost[1] ? "lost" : "" },
    ]);
  }
  parent.append(
    makeTable(
      "Note-ons / note-offs",
      ["Part", "sent", ...(editor ? ["editor got"] : []), "\u201cMidi Out\u201d", "lost"],
      rows,
    ),
  );
}

function showRun({ session, results }, list) {
  for (const [subject, text] of [...session, ...results])
    list.append(make("dt", subject), make("dd", text));
}

/** Buttons and slider that choose the part of the song that is shown. */
const zoom = {
  length: 1,

  start(length) {
    this.length = length;
    this.position = document.getElementById("position");
    document.getElementById("closer").onclick = () => this.scale(0.5);
    document.getElementById("wider").onclick = () => this.scale(2);
    document.getElementById("whole").onclick = () => this.show(0, length);
    this.position.oninput = () => {
      const { from, to } = pictures.view;
      const start = (this.position.value / 1000) * (length - (to - from));
      this.show(start, start + to - from);
    };
    this.show(0, length);
  },

  scale(factor) {
    const { from, to } = pictures.view;
    const middle = (from + to) / 2;
    const half = ((to - from) / 2) * factor;
    this.show(middle - half, middle + half);
  },

  show(from, to) {
    const size = Math.min(Math.max(to - from, Math.min(0.05, this.length)), this.length);
    const start = Math.min(Math.max(from, 0), this.length - size);
    pictures.view = { from: start, to: start + size };
    const isWhole = size >= this.length;
    this.position.disabled = isWhole;
    this.position.value = isWhole ? 0 : (1000 * start) / (this.length - size);
    document.getElementById("whole").disabled = isWhole;
    document.getElementById("wider").disabled = isWhole;
    const decimals = size < 20 ? 2 : 0;
    const words = `${clockTime(start, decimals)} to ${clockTime(start + size, decimals)}`;
    document.getElementById("shown").textContent = words;
    this.position.setAttribute("aria-valuetext", words);
    requestAnimationFrame(() => pictures.drawAll());
  },
};

/** Dragging over this picture shows what lies under the drag. */
function chooseByDragging(picture) {
  const timeAt = (event) => {
    const plot = new Plot(
      picture.canvas.getContext("2d"),
      picture.figure.clientWidth,
      picture.height,
      {},
    );
    const { from, to } = pictures.view;
    return from + ((event.offsetX - plot.left) / plot.width) * (to - from);
  };
  let begin = null;
  picture.canvas.onpointerdown = (event) => {
    begin = timeAt(event);
  };
  picture.canvas.onpointerup = (event) => {
    const end = timeAt(event);
    if (begin !== null && Math.abs(end - begin) > 0.01 * (pictures.view.to - pictures.view.from))
      zoom.show(Math.min(begin, end), Math.max(begin, end));
    begin = null;
  };
}

function showPage() {
  const data = readData();
  const place = (id) => document.getElementById(id);
  showHeader(data);
  showFigures(data);
  showOverview(data, place("overview"));
  for (let part = 0; part < 16; ++part) showPart(data, part, place("parts"));
  showCurves(data, place("curves"));
  showProcess(data, place("blocks"));
  showQueue(data, place("blocks"));
  showTimes(data, place("times"));
  showLost(data, place("lost"));
  showCounts(data, place("counts"));
  showRun(data, place("run"));
  zoom.start(data.length);
}

showPage();
addEventListener("resize", () => requestAnimationFrame(() => pictures.drawAll()));
matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => pictures.drawAll());
addEventListener("beforeprint", () => {
  document.documentElement.classList.add("printing");
  pictures.drawAll();
});
addEventListener("afterprint", () => {
  document.documentElement.classList.remove("printing");
  pictures.drawAll();
});
