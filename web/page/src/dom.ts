// Elements with attributes and children. Texts become text nodes and never mark-up, so that a title can hold anything.

export type Child = Node | string | number | null | undefined | false | Child[];
type Attributes = Record<string, unknown>;

function fill(element: Element, attributes: Attributes, children: Child[]): void {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value as EventListener);
    else if (name === "value") (element as HTMLInputElement).value = String(value);
    else if (name === "checked") (element as HTMLInputElement).checked = Boolean(value);
    else element.setAttribute(name, value === true ? "" : String(value));
  }
  append(element, children);
}

function append(element: Element, children: Child[]): void {
  for (const child of children) {
    if (Array.isArray(child)) append(element, child);
    else if (child instanceof Node) element.append(child);
    else if (child !== null && child !== undefined && child !== false) element.append(String(child));
  }
}

export function h<K extends keyof HTMLElementTagNameMap>(tag: K, attributes: Attributes = {}, ...children: Child[]): HTMLElementTagNameMap[K] {
  const element = document.createElement(tag);
  // The choices of a select stand before its value is set.
  const { value, ...others } = attributes;
  fill(element, others, children);
  if (value !== undefined) fill(element, { value }, []);
  return element;
}

export function s(tag: string, attributes: Attributes = {}, ...children: Child[]): SVGElement {
  const element = document.createElementNS("http://www.w3.org/2000/svg", tag);
  fill(element, attributes, children);
  return element;
}

/** Replaces what is in an element. */
export function put(element: Element, ...children: Child[]): void {
  element.replaceChildren();
  append(element, children);
}

/** A drawing of the core in a tree of its own: its styles stay in it, and the colours are those of the page. */
export function drawing(svg: string, style = ""): HTMLElement {
  const holder = h("div", { class: "drawing" });
  const parsed = new DOMParser().parseFromString(svg, "image/svg+xml").documentElement;
  if (parsed.nodeName !== "svg") return holder;
  for (const element of [...parsed.querySelectorAll("script, foreignObject, a")]) element.remove();
  for (const element of [parsed, ...parsed.querySelectorAll("*")])
    for (const { name, value } of [...element.attributes])
      if (name.startsWith("on") || (name.endsWith("href") && !value.startsWith("#"))) element.removeAttribute(name);
  const extra = document.createElement("style");
  extra.textContent = `svg { max-width: 100%; height: auto; background: none !important; } ${style}`;
  holder.attachShadow({ mode: "open" }).append(document.importNode(parsed, true), extra);
  return holder;
}
