"use strict";

/** Reads the numbers that play packed: seven bits a byte, the lowest first, in base 64. */
class Numbers {
  constructor(text) {
    this.bytes = atob(text);
    this.at = 0;
  }

  atEnd() {
    return this.at >= this.bytes.length;
  }

  next() {
    let number = 0;
    for (let scale = 1; ; scale *= 128) {
      const byte = this.bytes.charCodeAt(this.at++);
      number += (byte & 127) * scale;
      if (byte < 128) return number;
    }
  }

  nextSigned() {
    const number = this.next();
    return number % 2 ? -(number + 1) / 2 : number / 2;
  }
}

/** The notes that were sent, in seconds; startBack and endBack are null for what did not come
    back. */
function readNotes(text, rate) {
  const numbers = new Numbers(text);
  const notes = [];
  let start = 0;
  while (!numbers.atEnd()) {
    start += numbers.next();
    const end = start + numbers.next();
    const key = numbers.next();
    const traits = numbers.next();
    const note = {
      start: start / rate,
      end: end / rate,
      part: key >> 7,
      pitch: key & 127,
      velocity: traits >> 4,
      begins: (traits & 1) !== 0,
      ends: (traits & 2) !== 0,
      startBack: null,
      endBack: null,
    };
    if (traits & 4) note.startBack = (start + numbers.nextSigned()) / rate;
    if (traits & 8) note.endBack = (end + numbers.nextSigned()) / rate;
    note.lostStart = note.begins && note.startBack === null;
    note.lostEnd = note.ends && note.endBack === null;
    notes.push(note);
  }
  return notes;
}

/** What left without having been sent. */
function readExtra(text, rate) {
  const numbers = new Numbers(text);
  const events = [];
  while (!numbers.atEnd()) {
    const start = numbers.next() / rate;
    const key = numbers.next();
    events.push({ start, part: key >> 7, pitch: key & 127, on: numbers.next() > 0 });
  }
  return events;
}

/** Neighbouring blocks together: times of process in seconds, and counts of events. */
function readSpans(text, secondsInABlock) {
  const numbers = new Numbers(text);
  const spans = [];
  let block = 0;
  while (!numbers.atEnd()) {
    const blocks = numbers.next();
    const sum = numbers.next() / 1e9;
    spans.push({
      start: block * secondsInABlock,
      end: (block + blocks) * secondsInABlock,
      mean: sum / Math.max(blocks, 1),
      longest: numbers.next() / 1e9,
      sent: numbers.next(),
      left: numbers.next(),
      mostSent: numbers.next(),
      mostLeft: numbers.next(),
    });
    block += blocks;
  }
  return spans;
}

function readCurve(text, rate) {
  const numbers = new Numbers(text);
  const points = [];
  while (!numbers.atEnd())
    points.push({ time: numbers.next() / rate, value: numbers.next() / 10000 });
  return points;
}

/** Where the steps of the distribution begin, in seconds, and how many there are to each factor of
    ten. */
const SHORTEST_TIME = 1e-8;
const STEPS_TO_A_TENFOLD = 50;

/** How many blocks took how long, by steps. */
function readTimes(text) {
  const numbers = new Numbers(text);
  const steps = [];
  while (!numbers.atEnd()) steps.push(numbers.next());
  return steps;
}

function readData() {
  const data = JSON.parse(document.getElementById("data").textContent);
  const report = data.report;
  const rate = report.sampleRate;
  const block = report.blockSize / rate;
  return {
    report,
    block,
    session: data.session,
    results: data.results,
    length: report.samples / rate,
    notes: readNotes(data.notes, rate),
    extra: readExtra(data.extra, rate),
    spans: readSpans(data.spans, block),
    blocksInASpan: data.blocksInASpan,
    times: readTimes(data.times),
    curves: data.curves.map((curve) => ({
      title: curve.title,
      points: readCurve(curve.points, rate),
    })),
  };
}
