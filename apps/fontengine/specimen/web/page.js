"use strict";
(() => {
  const table = JSON.parse(document.getElementById("glyph-data").textContent);
  const pageLength = 512; // cells that a block adds at a time
  const maxResults = 64;
  const rangeStarts = []; // the number of characters before each range
  let characterCount = 0;
  for (const [first, last] of table.ranges) {
    rangeStarts.push(characterCount);
    characterCount += last - first + 1;
  }
  const sheetStyle = document.head.appendChild(document.createElement("style"));
  const knownSheets = new Set();
  const byId = (id) => document.getElementById(id);
  const formatCode = (code) => code.toString(16).toUpperCase().padStart(4, "0");
  const formatCount = (count) => `${count} ${count === 1 ? "character" : "characters"}`;

  function make(name, properties = {}, ...children) {
    const element = Object.assign(document.createElement(name), properties);
    element.append(...children);
    return element;
  }

  /** The index of the last ordered item that is not beyond; -1 for none. */
  function findLast(items, isBeyond) {
    let low = 0;
    let high = items.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (isBeyond(items[middle])) high = middle;
      else low = middle + 1;
    }
    return low - 1;
  }

  /** The index of a code among all mapped characters, or -1. */
  function findIndex(code) {
    const at = findLast(table.ranges, ([first]) => first > code);
    return at >= 0 && code <= table.ranges[at][1] ? rangeStarts[at] + code - table.ranges[at][0] : -1;
  }

  function getCode(index) {
    const at = findLast(rangeStarts, (start) => start > index);
    return table.ranges[at][0] + index - rangeStarts[at];
  }

  /** The number of mapped characters below a code. */
  function countBelow(code) {
    const at = findLast(table.ranges, ([first]) => first >= code);
    if (at < 0) return 0;
    const [first, last] = table.ranges[at];
    return rangeStarts[at] + Math.min(code - 1, last) - first + 1;
  }

  /** Decodes a sheet only when its first cell is shown. */
  function useSheet(number) {
    if (knownSheets.has(number)) return;
    knownSheets.add(number);
    const sides = `${table.columns * table.cell}px auto`;
    sheetStyle.sheet.insertRule(
      `.sheet${number}{background-image:url(${table.sheets[number]});background-size:${sides}}`);
  }

  function makeGlyph(index) {
    const glyph = make("span", { className: "glyph none" });
    glyph.style.width = glyph.style.height = `${table.cell}px`;
    if (2 * index < table.entries.length) {
      const cell = index % table.cellsInSheet;
      const sheet = Math.floor(index / table.cellsInSheet);
      useSheet(sheet);
      glyph.className = `glyph sheet${sheet}${table.isInColor ? " color" : ""}`;
      const x = (cell % table.columns) * table.cell;
      const y = Math.floor(cell / table.columns) * table.cell;
      glyph.style.backgroundPosition = `${-x}px ${-y}px`;
    }
    return glyph;
  }

  const blocks = table.blocks.map(([first, last, name]) => {
    const start = countBelow(first);
    return { first, last, name, start, count: countBelow(last + 1) - start, shown: 0 };
  });

  function findBlock(code) {
    return blocks[findLast(blocks, (block) => block.first > code)];
  }

  function describe(code, index) {
    const parts = [`decimal ${code}`];
    if (2 * index < table.entries.length) {
      parts.push(`glyph ${table.entries[2 * index]}`, `advance ${table.entries[2 * index + 1] / 1000} em`);
    } else {
      parts.push("no picture on this page");
    }
    return parts.concat(findBlock(code).name).join(" · ");
  }

  function makeCell(index) {
    const code = getCode(index);
    const cell = make("button", { type: "button", className: "cell", tabIndex: -1 }, makeGlyph(index),
      make("code", { textContent: formatCode(code) }));
    cell.dataset.code = code;
    cell.setAttribute("aria-label", `U+${formatCode(code)} ${String.fromCodePoint(code)}`);
    cell.setAttribute("aria-pressed", "false");
    return cell;
  }

  /** Shows `count` cells of a block, rounded up to pages. */
  function fillBlock(block, count) {
    const wanted = Math.min(block.count, Math.ceil(count / pageLength) * pageLength);
    const cells = document.createDocumentFragment();
    for (; block.shown < wanted; ++block.shown) {
      cells.append(makeCell(block.start + block.shown));
    }
    block.cells.append(cells);
    if (!block.cells.querySelector("[tabindex='0']")) block.cells.firstChild.tabIndex = 0;
    block.more.hidden = block.shown === block.count;
    block.more.textContent = `Show more (${block.count - block.shown} left)`;
  }

  function makeBlock(block) {
    const range = `U+${formatCode(block.first)}–U+${formatCode(block.last)}, ${formatCount(block.count)}`;
    block.cells = make("div", { className: "cells" });
    block.cells.setAttribute("role", "group");
    block.cells.setAttribute("aria-label", `Characters of ${block.name}`);
    block.more = make("button", { type: "button", className: "action", hidden: true });
    block.more.addEventListener("click", () => {
      const before = block.shown;
      fillBlock(block, before + pageLength);
      moveTo(block.cells.children[before]);
    });
    block.element = make("details", { className: "block" },
      make("summary", {}, block.name, " ", make("span", { className: "note", textContent: range })),
      block.cells, block.more);
    block.element.addEventListener("toggle", () => {
      if (block.element.open && block.shown === 0) fillBlock(block, 1);
    });
    block.cells.addEventListener("keydown", moveByKey);
    block.cells.addEventListener("click", (event) => {
      const cell = event.target.closest(".cell");
      if (cell) choose(cell);
    });
    return block.element;
  }

  /** One cell of a block is in the tab order: the one that had the focus last. */
  function moveTo(cell) {
    if (!cell) return;
    for (const other of cell.parentNode.querySelectorAll("[tabindex='0']")) other.tabIndex = -1;
    cell.tabIndex = 0;
    cell.focus();
  }

  function findInRow(cell, step) {
    const left = cell.offsetLeft;
    const next = (other) => (step > 0 ? other.nextElementSibling : other.previousElementSibling);
    let other = next(cell);
    while (other && other.offsetLeft !== left) other = next(other);
    return other;
  }

  function moveByKey(event) {
    const cell = event.target.closest(".cell");
    const moves = {
      ArrowLeft: () => cell.previousElementSibling,
      ArrowRight: () => cell.nextElementSibling,
      ArrowUp: () => findInRow(cell, -1),
      ArrowDown: () => findInRow(cell, 1),
      Home: () => cell.parentNode.firstElementChild,
      End: () => cell.parentNode.lastElementChild,
    };
    if (!cell || !Object.hasOwn(moves, event.key)) return;
    event.preventDefault();
    moveTo(moves[event.key]());
  }

  let chosen = null;

  /** Marks a cell and describes it among the results. */
  function choose(cell) {
    if (chosen) chosen.setAttribute("aria-pressed", "false");
    chosen = cell;
    cell.setAttribute("aria-pressed", "true");
    showResults([Number(cell.dataset.code)], `U+${formatCode(Number(cell.dataset.code))}`);
  }

  function showInTable(code) {
    const block = findBlock(code);
    const place = findIndex(code) - block.start;
    block.element.open = true;
    fillBlock(block, place + 1);
    const cell = block.cells.children[place];
    cell.scrollIntoView({ block: "center" });
    moveTo(cell);
    choose(cell);
  }

  function makeResult(code) {
    const index = findIndex(code);
    const show = make("button", { type: "button", className: "action", textContent: "Show in table" });
    show.setAttribute("aria-label", `Show U+${formatCode(code)} in the table`);
    show.addEventListener("click", () => showInTable(code));
    const item = make("li", {}, makeGlyph(index), make("div", {},
      make("strong", { textContent: `U+${formatCode(code)}` }), " ",
      make("span", { className: "note", textContent: describe(code, index) })), show);
    item.dataset.code = code;
    return item;
  }

  function showResults(codes, query) {
    const found = codes.filter((code) => findIndex(code) >= 0).slice(0, maxResults);
    byId("results").replaceChildren(...found.map(makeResult));
    byId("status").textContent = query === "" ? ""
      : found.length === 0 ? `This font has no ${query}` : `${formatCount(found.length)} for ${query}`;
  }

  /** The code points that a query may mean, the likeliest first. */
  function readQuery(query) {
    const characters = [...query];
    if (characters.length === 1) {
      const digit = /^\d$/.test(query) ? [Number(query)] : [];
      return [query.codePointAt(0), ...digit];
    }
    const text = query.trim();
    const code = /^(?:u\+|\\u|0x|&#x)([0-9a-f]{1,6});?$/i.exec(text);
    if (code) return [parseInt(code[1], 16)];
    const decimal = /^(?:&#)?(\d{1,7});?$/.exec(text);
    const bare = /^[0-9a-f]{4,6}$/i.test(text) ? [parseInt(text, 16)] : [];
    if (decimal) return [Number(decimal[1]), ...bare];
    return [...bare, ...new Set([...text].map((character) => character.codePointAt(0)))];
  }

  const query = byId("query");
  query.addEventListener("input", () => showResults(readQuery(query.value), query.value));
  byId("search").addEventListener("submit", (event) => {
    event.preventDefault();
    const first = byId("results").querySelector("button");
    if (first) first.focus();
  });
  document.addEventListener("keydown", (event) => {
    const isTyping = event.target.closest("input");
    if (event.key === "/" && !isTyping && !event.ctrlKey && !event.metaKey && !event.altKey) {
      event.preventDefault();
      query.focus();
    }
  });
  byId("blocks").append(...blocks.map(makeBlock));
  if (blocks.length > 0) blocks[0].element.open = true;
})();
