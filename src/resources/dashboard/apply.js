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
        var own = found.dataset.address || found.getAttribute("href");
        if (own.toLowerCase() !== address.toLowerCase())
          return;
        found.dataset.address = own;
        found.style.display = target ? "" : "none";
        if (target)
          found.href = target;
      });
    }
  };
  delete document.documentElement.dataset.drawn;
  operations.forEach(function (each) { handlers[each[0]](each[1], each[2]); });
  requestAnimationFrame(function () {
    requestAnimationFrame(function () { document.documentElement.dataset.drawn = "yes"; });
  });
  return "done";
})
