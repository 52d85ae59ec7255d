// usage: cscript //nologo import.js PLAN PRODUCT BALANCES MEMBERS CELLS EVENTS
//
// A host written in JScript: supplies its own plan, imports, and writes the plan's cells and the events it received.
// MEMBERS selects how the plan exposes its data object: "functions" or "properties".

var files = new ActiveXObject("Scripting.FileSystemObject");

function NewDocument() {
  var made = new ActiveXObject("MSXML2.DOMDocument.6.0");
  made.async = false;
  made.preserveWhiteSpace = true;
  made.setProperty("SelectionLanguage", "XPath");
  return made;
}

function ForEach(list, action) {
  for (var i = 0; i < list.length; ++i) action(list.item(i), i);
}

function Plan(path, members) {
  var plan = NewDocument();
  if (!plan.load(path)) throw new Error("no plan: " + path);

  function Element(id) {
    var element = plan.selectSingleNode("/plan/tables/tableitem[@id='" + id + "']");
    if (element == null) throw new Error("no table " + id);
    return element;
  }

  function Take(text) {
    var changed = NewDocument();
    if (!changed.loadXML(text)) return;
    ForEach(changed.selectNodes("//tableitem"), function (from) {
      var into = Element(from.getAttribute("id"));
      into.replaceChild(from.selectSingleNode("lastsavedid").cloneNode(true), into.selectSingleNode("lastsavedid"));
      into.replaceChild(from.selectSingleNode("tableblocks").cloneNode(true), into.selectSingleNode("tableblocks"));
    });
  }

  var data = {
    tables: function (id) {
      var element = Element(id);
      return { Serialize: function () { return element.xml; } };
    },
    Deserialize: function (text) { Take(String(text)); }
  };
  this.OpenPlan = function (file) { return false; };
  this.Data = members == "functions" ? function () { return data; } : data;

  this.WriteCells = function (path) {
    var file = files.CreateTextFile(path, true);
    ForEach(plan.selectNodes("/plan/tables/tableitem"), function (item) {
      ForEach(item.selectNodes("tableblocks/*"), function (block) {
        ForEach(block.selectNodes("*"), function (row, rowNumber) {
          ForEach(row.selectNodes("*"), function (cell, column) {
            file.Write([item.getAttribute("id"), Ascii(block.getAttribute("id")), rowNumber, column,
                        Ascii(cell.text)].join("\t") + "\n");
          });
        });
      });
    });
    file.Close();
  };
}

function Ascii(text) {
  var ascii = "";
  for (var i = 0; i < text.length; ++i) {
    var code = text.charCodeAt(i);
    if (code == 10) ascii += "\\n";
    else if (code == 13) ascii += "\\r";
    else if (code == 9) ascii += "\\t";
    else if (code == 92) ascii += "\\\\";
    else if (code >= 32 && code < 127) ascii += text.charAt(i);
    else ascii += "\\u" + ("000" + code.toString(16)).slice(-4);
  }
  return ascii;
}

function EventLog(path) {
  var file = files.CreateTextFile(path, true);
  this.XMLprocessing = function (oXML) { file.Write("XMLprocessing " + (oXML === null ? "Nothing" : typeof oXML) + "\n"); };
  this.TableModified = function (sTableID) { file.Write("TableModified " + sTableID + "\n"); };
  this.AfterImport = function () { file.Write("AfterImport\n"); };
  this.ProgressBarChange = function (PercentValue, Description) {
    file.Write("ProgressBarChange " + PercentValue + " " + Description + "\n");
  };
  this.Finish = function () { file.Close(); };
}

// Replace the element passed in with one of the host's own.
function SelectAllExpenses(exchange) {
  var own = NewDocument();
  own.loadXML(exchange.SelectedExpenses.xml);
  ForEach(own.documentElement.childNodes, function (account) {
    if (account.nodeType == 1) account.setAttribute("selected", "True");
  });
  exchange.SelectedExpenses = own.documentElement;
}

var plan = new Plan(WScript.Arguments(0), WScript.Arguments(3));
var events = new EventLog(WScript.Arguments(5));
var exchange = new ActiveXObject("KRN6_QB2002.QBDataExchange");
// Wine's script host cannot connect events itself.
var bridge = new ActiveXObject("KRN6_TestBridge.EventBridge");
bridge.Connect(exchange, events);

exchange.QBCompany = "C:\\Books\\nursery.qbw";
exchange.KRNPlanData = plan;
exchange.KRNProduct = WScript.Arguments(1);
exchange.IncludeExpenseAccounts = true;
exchange.IncludeIncomeAccounts = true;
exchange.IncludePastPerformance = true;
exchange.BalancesImport = WScript.Arguments(2);
if (exchange.BalancesImport > 0) {
  exchange.GrowthRateIncome = 10;
  exchange.GrowthRateCOGS = 5;
  exchange.GrowthRateExpenses = 3;
}
exchange.KRNStartingYear = 2003;
exchange.KRNStartingMonth = 1;
if (exchange.KRNProduct == 2) SelectAllExpenses(exchange);

var imported = exchange.Go();
bridge.Disconnect();
events.Finish();
plan.WriteCells(WScript.Arguments(4));
WScript.Echo("imported " + (imported ? "True" : "False") + ", error " + exchange.ErrorNumber + " " +
             exchange.ErrorDescription);
WScript.Echo("end of import.js");
WScript.Quit(0);
