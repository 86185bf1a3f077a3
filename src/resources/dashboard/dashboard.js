// The functions that the console calls, and the page's keys.

function selectPanel(panelId) {
  var panel = document.getElementById(panelId);
  if (!panel)
    return;
  var siblings = panel.parentNode.children;
  for (var i = 0; i < siblings.length; ++i)
    siblings[i].style.display = siblings[i] === panel ? "block" : "none";
}

function hideChildPanels(parentId) {
  var parent = document.getElementById(parentId);
  if (!parent)
    return;
  for (var i = 0; i < parent.children.length; ++i)
    parent.children[i].style.display = "none";
}

// Makes a frame that looks like the one before: all of these are the page's colour. There are three, so that two changes
// before one frame don't come to nothing.
var backgrounds = ["", "var(--base)", "linear-gradient(var(--base), var(--base))"];
function drawAnew() {
  backgrounds.push(backgrounds.shift());
  document.body.style.background = backgrounds[0];
}

// F5 is the console's: the page never loads itself anew.
function onKeyDown(event) {
  if (event.keyCode !== 116)
    return true;
  event.preventDefault();
  event.stopPropagation();
  return false;
}

function onContextMenu() {
  return false;
}

// Loaded before they are needed, so that a message and its picture show together.
var pictures = ["error.svg", "warning.svg", "information.svg"].map(function (name) {
  var picture = new Image();
  picture.src = name;
  return picture;
});

document.body.onkeydown = onKeyDown;
document.oncontextmenu = onContextMenu;
document.title = "loaded";
