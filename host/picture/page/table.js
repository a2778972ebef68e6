// The table of the objects. Only the rows that are in sight exist, between two empty ones that keep the height of
// the rest: so a table of 100,000 rows opens and scrolls as one of ten.

const kRowHeight = 24; // pixels, as in the style sheet
const kSpareRows = 8; // above and below what is in sight

class Table {
  constructor(columns, count, textOf) {
    this.columns = columns;
    this.textOf = textOf;
    this.element = document.getElementById('table');
    this.frame = document.getElementById('rows');
    this.body = this.element.tBodies[0];
    this.all = Array.from({ length: count }, (_, object) => object);
    this.shown = this.all;
    this.chosen = this.hovered = -1;
    this.sorted = { column: -1, sign: 1 };
    this.words = '';
    this.onChoose = this.onHover = this.onOpen = () => {};
    this.addHeadings();
    this.frame.addEventListener('scroll', () => this.fill());
    new ResizeObserver(() => this.fill()).observe(this.frame);
    this.body.addEventListener('click', event => this.withObject(event, object => this.onChoose(object)));
    this.body.addEventListener('dblclick', event => this.withObject(event, object => this.onOpen(object)));
    this.body.addEventListener('pointerover', event => this.withObject(event, object => this.onHover(object)));
    this.body.addEventListener('pointerleave', () => this.onHover(-1));
    this.element.addEventListener('keydown', event => this.key(event));
    this.fill();
  }

  addHeadings() {
    const row = this.element.tHead.rows[0];
    this.columns.forEach((column, index) => {
      const cell = row.appendChild(document.createElement('th'));
      cell.scope = 'col';
      cell.className = column.isNumber ? 'number' : '';
      const button = cell.appendChild(document.createElement('button'));
      button.type = 'button';
      button.textContent = column.title;
      button.title = 'Sort by ' + column.title;
      button.addEventListener('click', () => this.sort(index));
    });
    this.element.setAttribute('aria-colcount', this.columns.length);
  }

  withObject(event, act) {
    const row = event.target.closest('tr[id]');
    if (row) act(Number(row.id.slice(4)));
  }

  // Sorts by a column, the other way round when it is sorted by it already. Equal rows keep the drawing's order.
  sort(index) {
    this.sorted = { column: index, sign: this.sorted.column === index ? -this.sorted.sign : 1 };
    [...this.element.tHead.rows[0].cells].forEach((cell, each) =>
      each === index ? cell.setAttribute('aria-sort', this.sorted.sign > 0 ? 'ascending' : 'descending') : cell.removeAttribute('aria-sort'));
    this.arrange();
  }

  // Shows the rows whose texts hold all the words.
  filter(words) {
    this.words = words.toLowerCase().split(/\s+/).filter(Boolean);
    this.arrange();
  }

  arrange() {
    const { column, sign } = this.sorted;
    this.shown = this.all.filter(object => {
      const text = this.words.length ? this.textOf(object).toLowerCase() : '';
      return this.words.length === 0 || this.words.every(word => text.includes(word));
    });
    if (column >= 0) {
      const value = this.columns[column].value;
      this.shown.sort((a, b) => {
        const u = value(a), v = value(b);
        return u < v ? -sign : u > v ? sign : a - b;
      });
    }
    this.fill();
    if (this.chosen >= 0) this.scrollTo(this.chosen);
  }

  fill() {
    const room = Math.ceil(this.frame.clientHeight / kRowHeight);
    const top = Math.floor(this.frame.scrollTop / kRowHeight) - kSpareRows;
    const first = Math.max(Math.min(top, this.shown.length - room), 0);
    const last = Math.min(first + room + 2 * kSpareRows, this.shown.length);
    const rows = [this.spacer(first)];
    for (let place = first; place < last; ++place) rows.push(this.row(place));
    rows.push(this.spacer(this.shown.length - last));
    this.body.replaceChildren(...rows);
    this.element.setAttribute('aria-rowcount', this.shown.length + 1);
    this.markActive();
  }

  spacer(rows) {
    const row = document.createElement('tr');
    row.ariaHidden = 'true';
    row.style.height = rows * kRowHeight + 'px';
    return row;
  }

  row(place) {
    const object = this.shown[place], row = document.createElement('tr');
    row.id = 'row-' + object;
    row.setAttribute('aria-rowindex', place + 2);
    row.setAttribute('aria-selected', object === this.chosen);
    row.classList.toggle('hovered', object === this.hovered);
    for (const column of this.columns) {
      const cell = row.insertCell();
      cell.textContent = cell.title = column.text(object);
      if (column.isNumber) cell.className = 'number';
      if (column.isDim?.(object)) cell.classList.add('hidden-layer');
    }
    return row;
  }

  markActive() {
    const row = document.getElementById('row-' + this.chosen);
    if (row) this.element.setAttribute('aria-activedescendant', row.id);
    else this.element.removeAttribute('aria-activedescendant');
  }

  choose(object, isScrolled) {
    this.chosen = object;
    if (isScrolled && object >= 0) this.scrollTo(object);
    this.fill();
  }

  hover(object) {
    if (object === this.hovered) return;
    for (const [each, isOn] of [[this.hovered, false], [object, true]])
      document.getElementById('row-' + each)?.classList.toggle('hovered', isOn);
    this.hovered = object;
  }

  scrollTo(object) {
    const place = this.shown.indexOf(object);
    if (place < 0) return;
    const head = this.element.tHead.offsetHeight, top = place * kRowHeight, frame = this.frame;
    if (top < frame.scrollTop || top + kRowHeight + head > frame.scrollTop + frame.clientHeight)
      frame.scrollTop = Math.max(top - (frame.clientHeight - head) / 2, 0);
  }

  key(event) {
    const page = Math.max(Math.floor(this.frame.clientHeight / kRowHeight) - 2, 1);
    const steps = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -Infinity, End: Infinity };
    if (event.key === 'Enter' && this.chosen >= 0 && event.target === this.element) this.onOpen(this.chosen);
    else if (event.key === 'Escape') this.onChoose(-1);
    else if (event.key in steps && this.shown.length) {
      const place = this.shown.indexOf(this.chosen);
      const next = clamp(place < 0 ? 0 : place + steps[event.key], 0, this.shown.length - 1);
      this.onChoose(this.shown[next], true);
    } else return;
    event.preventDefault();
  }
}
