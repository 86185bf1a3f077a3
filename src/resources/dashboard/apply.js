// What the console runs in the page, followed by its list of operations in parentheses. Texts arrive as data: nothing
// of them is read as markup.
(function (operations) {
  if (typeof selectPanel !== "function" || typeof hideChildPanels !== "function")
    return "no functions";
  function element(id, change) {
    var found = document.getElementById(id);
    if (found)
      change(found);
  }
  var handlers = {
    text: function (id, text) { element(id, function (found) { found.innerText = text; }); },
    className: function (id, name) { element(id, function (found) { found.className = name; }); },
    select: function (id) { selectPanel(id); },
    hideChildren: function (id) { hideChildPanels(id); },
    style: function (name, value) { document.documentElement.style.setProperty(name, value); },
    // A link that leads nowhere yet is not shown.
    link: function (address, target) {
      document.querySelectorAll("a").forEach(function (found) {
        found.ownAddress = found.ownAddress || found.getAttribute("href");
        if (found.ownAddress.toLowerCase() !== address.toLowerCase())
          return;
        found.style.display = target ? "" : "none";
        if (target)
          found.href = target;
      });
    }
  };
  var turn = window.turn = (window.turn || 0) + 1;
  window.drawn = "";
  operations.forEach(function (each) { handlers[each[0]](each[1], each[2]); });
  Promise.allSettled(pictures.map(function (each) { return each.decode(); })).then(function () {
    requestAnimationFrame(function () {
      requestAnimationFrame(function () {
        if (turn === window.turn)
          window.drawn = "yes";
      });
    });
  });
  return "done";
})
