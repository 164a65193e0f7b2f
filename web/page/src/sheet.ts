// The calculation sheet: shown in a frame that runs no script, printed or saved.

import { h, put } from "./dom";
import { save } from "./files";

export class Sheet {
  private readonly dialog: HTMLDialogElement;
  private readonly frame = h("iframe", { sandbox: "allow-same-origin allow-modals", title: "Calculation sheet" });
  private html = "";
  private name = "";

  constructor() {
    this.dialog = h("dialog", { class: "sheet", "aria-label": "Calculation sheet" },
      h("div", { class: "bar-row" }, h("h2", {}, "Calculation sheet"),
        h("button", { type: "button", class: "primary", onclick: () => this.frame.contentWindow?.print() }, "Print"),
        h("button", { type: "button", onclick: () => save(this.name, [this.html], "text/html") }, "Save HTML"),
        h("button", { type: "button", onclick: () => this.dialog.close() }, "Close")),
      this.frame);
    document.body.append(this.dialog);
  }

  async open(html: Promise<{ html: string }>, name: string): Promise<void> {
    this.name = name;
    this.dialog.showModal();
    this.frame.srcdoc = "";
    try {
      this.html = (await html).html;
      this.frame.srcdoc = this.html;
    } catch (failure) {
      this.html = "";
      const words = h("p", {}, failure instanceof Error ? failure.message : String(failure));
      put(words, words.textContent);
      this.frame.srcdoc = words.outerHTML;
    }
  }
}
