// Imports the accounts of a QuickBooks company into a plan file:
//
//     cscript import.js nursery.kpf
//
// Exit code 0: imported and saved. Exit code 1: failed, the plan file is unchanged.

function NewDocument() {
  var document = new ActiveXObject("MSXML2.DOMDocument.6.0");
  document.async = false;
  document.preserveWhiteSpace = true;
  document.setProperty("SelectionLanguage", "XPath");
  return document;
}

// The plan as the component sees it: OpenPlan and Data, which reads tables by id and takes the changed ones as one
// document.
function Plan() {
  var document = null;

  function Find(id) {
    var table = document.selectSingleNode("/plan/tables/tableitem[@id='" + id + "']");
    if (table == null) throw new Error(9, "no table " + id);
    return table;
  }
  function ReplaceIn(table, changed, name) {
    table.replaceChild(changed.selectSingleNode(name).cloneNode(true), table.selectSingleNode(name));
  }

  this.OpenPlan = function (file) {
    document = NewDocument();
    return document.load(file);
  };
  this.Save = function (file) { document.save(file); };
  this.Data = {
    tables: function (id) {
      var table = Find(id);
      return { Serialize: function () { return table.xml; } };
    },
    Deserialize: function (text) {
      var changed = NewDocument();
      if (!changed.loadXML(String(text))) return;
      var tables = changed.selectNodes("//tableitem");
      for (var i = 0; i < tables.length; ++i) {
        var table = Find(tables.item(i).getAttribute("id"));
        ReplaceIn(table, tables.item(i), "lastsavedid");
        ReplaceIn(table, tables.item(i), "tableblocks");
      }
    }
  };
}

// The component raises its events while Go runs.
function exchange_ProgressBarChange(percent, description) {
  WScript.Echo(percent + " % " + description);
}

// Throws an Error if the import fails: of the component, the plan, QuickBooks, or one made of the error pair.
function ImportInto(file) {
  if (!exchange.KRNOpenPlan(file)) throw new Error(0, "there is no plan " + file);
  exchange.KRNProduct = 1;              // QBKRN_ALD
  exchange.KRNStartingYear = 2003;
  exchange.KRNStartingMonth = 1;
  exchange.BalancesImport = 0;          // BalImport_None: accounts without amounts
  exchange.IncludeExpenseAccounts = true;
  exchange.IncludeIncomeAccounts = true;
  // Go returns true even if the import failed: the error is in the pair ErrorNumber and ErrorDescription.
  if (!exchange.Go() || exchange.ErrorNumber != 0) {
    throw new Error(exchange.ErrorNumber, exchange.ErrorDescription);
  }
  plan.Save(file);
}

var file = WScript.Arguments(0);
var plan = new Plan();
var exchange = new ActiveXObject("KRN6_QB2002.QBDataExchange");
exchange.KRNPlanData = plan;
try {
  WScript.ConnectObject(exchange, "exchange_");
} catch (e) {
  // A host that cannot connect events imports without progress.
}

var result = 1;
try {
  ImportInto(file);
  WScript.Echo("The accounts are in " + file);
  result = 0;
} catch (e) {
  WScript.Echo("Not imported: " + e.description + (e.number == 0 ? "" : " (error " + e.number + ")"));
}
// The component and the plan hold references to each other until the component lets go of the plan.
exchange.KRNPlanData = null;
WScript.Quit(result);
